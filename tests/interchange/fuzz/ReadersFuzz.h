#pragma once

#include <cstddef>
#include <cstdint>

/// Puts any bytes before a reader of a catalog's CSV file and checks what it promises. A broken promise ends the
/// process, which a fuzzer reports with the input. They need an application object.
void fuzzValidator(const std::uint8_t* data, std::size_t size);
void fuzzScanner(const std::uint8_t* data, std::size_t size);
