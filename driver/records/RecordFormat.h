#pragma once

#include "CodePage.h"

#include <cstddef>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// Why records cannot be read, in words for the person who defined them.
class RecordError : public std::runtime_error
{
    using std::runtime_error::runtime_error;
};

/// How the records of a data file follow one another.
///
/// | organisation | FIXED | VARIABLE |
/// |---|---|---|
/// | SEQUENTIAL | one after the other; as lines with LINE | lines; behind a count with a COUNTED word or RDW |
/// | RELATIVE | slots of the record size, with a head with SLOT-4 or SLOT-8 | the same |
/// | INDEXED | each followed by a byte, a newline or for a deleted record a zero byte | as COUNTED-COBOL, where filler
/// bytes that are not zero mark a deleted record |
///
/// The open string is a run of words with `_`, blanks or commas between them, since `_` is what a blank becomes where
/// it is typed:
///
/// - `LINE`: records end in a newline, with or without a carriage return before it.
/// - `COUNTED-2`, `COUNTED-4`: each record stands behind its length in 2 or 4 bytes, low byte first; with `-BE`, high
///   byte first. `COUNTED-COBOL`: 2 bytes, high byte first, and 2 of filler. `RDW`: the record descriptor word of
///   mainframes, like COUNTED-COBOL, but its own 4 bytes count too; pieces of spanned records are no records.
/// - `SLOT-4`, `SLOT-8`: each slot begins with the length of its record in so many bytes, low byte first; 0 is an empty
///   slot. Without, a slot of only zero bytes is empty.
/// - `SKIP-n`: n bytes stand before the first record.
/// - the name of a code page (see `CodePage`); UTF-8 without one. It may hold underscores. Lines need one whose newline
///   is a byte.
///
/// Each matter is settled once, and indexed files have only their plain formats, which tell deleted records.
/// Words with `=` in them speak to other programs and are passed over.
struct RecordFormat {
    enum class Kind { Fixed, Lines, Counted, Slots };

    /// Whether every record has `recordSize` bytes, but for a slot that says less of itself.
    bool HasFixedSize() const { return kind == Kind::Fixed || kind == Kind::Slots; }

    Kind kind = Kind::Fixed;
    std::size_t recordSize = 0; ///< the longest record, in bytes
    std::size_t skip = 0;       ///< bytes before the first record

    std::size_t countBytes = 0; ///< of a length before each record; slots may have none
    std::size_t fillerBytes = 0;
    bool countHighByteFirst = false;
    bool countsItself = false; ///< the length includes those of count and filler
    bool fillerMarksDeleted = false;
    bool hasDeletionByte = false; ///< behind each record, zero for a deleted one

    std::shared_ptr<const CodePage> page = CodePage::Utf8();

    /// From the columns of a row of `TW_FILE`; no organisation is SEQUENTIAL, and no record type FIXED. Throws
    /// RecordError for a word that nothing is known of, and for a file that cannot be laid out so.
    static RecordFormat Read(std::string_view organisation, std::string_view recordType, std::string_view openString,
                             std::size_t recordSize);
};

} // namespace tarnwick::records
