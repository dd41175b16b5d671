#pragma once

#include <cstdint>
#include <string_view>

namespace tarnwick::records
{

/// A decoded cell. Text and bytes point into the record itself or into the room that was lent to the decoder; they hold
/// until the next cell is decoded into the same room. A text has no zero byte.
struct Value {
    enum class Kind { Null, Integer, Real, Text, Bytes };

    Kind kind = Kind::Null;
    std::int64_t integer = 0;
    double real = 0;
    std::string_view text;

    static Value Null() { return {}; }
    static Value Integer(std::int64_t number) { return {Kind::Integer, number, 0, {}}; }
    static Value Real(double number) { return {Kind::Real, 0, number, {}}; }
    static Value Text(std::string_view text) { return {Kind::Text, 0, 0, text}; }
    static Value Bytes(std::string_view bytes) { return {Kind::Bytes, 0, 0, bytes}; }
};

} // namespace tarnwick::records
