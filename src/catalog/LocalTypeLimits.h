#pragma once

#include <QString>

#include <cstdint>

/// What the ATTRIBUTES of a storage type allow for the length, precision, scale and format of a field.
struct LocalTypeLimits {
    /// A number's default and bounds. Where it is fixed, all three are equal and it is not editable.
    struct Range {
        std::int32_t preset = 0;
        std::int32_t minimum = 0;
        std::int32_t maximum = 0;
        bool editable = false;
    };

    Range Length;
    Range Precision;
    Range Scale;
    QString Format;
    bool FormatEditable = false;

    /// Where the field pane looks for "STRING;" in the wrapped attributes, counted from 1: right behind ";BINARY;".
    static constexpr int PaneStringPosition = 9;
    /// Where the field grid looks: on the semicolon before, so that a binary string keeps its precision editable there.
    static constexpr int GridStringPosition = 8;

    /// The limits from attributes that have been wrapped as ";" + ATTRIBUTES + ";".
    static LocalTypeLimits of(const QString& wrapped, int stringPosition);
};

/// The reading of a numeric attribute: its leading digits behind a zero, so 0 where the key is absent and for a
/// negative number. Raises 6 out of range.
std::int32_t NumberAttr(const QString& key, const QString& attributes);

/// The decimal digits that an integer of 1 to 8 bytes can take; 0 for any other size.
std::int32_t decimalDigits(std::int32_t bytes, bool isUnsigned);
