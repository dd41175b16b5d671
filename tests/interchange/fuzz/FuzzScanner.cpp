#include "FuzzMain.h"
#include "ReadersFuzz.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzzScanner(data, size);
    return 0;
}
