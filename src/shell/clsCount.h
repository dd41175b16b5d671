#pragma once

#include <cstdint>

/// A counter that a caller and a callee share by reference.
class clsCount
{
public:
    std::int32_t Value = 0;
};
