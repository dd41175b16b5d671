#pragma once

#include "FieldDecoder.h"

#include <string>
#include <vector>

/// Bytes of every storage type, and what they are.
namespace knownbytes
{

struct NumberCase {
    const char* type;
    std::string bytes;
    int scale;
    const char* decimal; ///< as exact digits; begins with ! where the bytes are none
    const char* page = "ISO-8859-1";
};

struct RealCase {
    const char* type;
    std::string bytes;
    const char* real;
};

struct TextCase {
    const char* type;
    std::string bytes;
    const char* format;
    tarnwick::records::Shown shown;
    std::string text;
    const char* page = "ISO-8859-1";
};

const std::vector<NumberCase>& Numbers();
const std::vector<RealCase>& Reals();
const std::vector<TextCase>& Texts();

} // namespace knownbytes
