#pragma once

#include <QLatin1StringView>
#include <QStringView>

#include <algorithm>
#include <array>
#include <cstddef>

/// A kind of line and what a reader does with it.
template <class Reading>
struct CsvKind {
    const char* id;
    Reading read;
};

/// The kind with an ID in upper case, or null.
template <class Reading, std::size_t count>
const CsvKind<Reading>* kindOf(const std::array<CsvKind<Reading>, count>& kinds, QStringView id)
{
    const auto found = std::find_if(kinds.begin(), kinds.end(),
                                    [id](const CsvKind<Reading>& one) { return id == QLatin1StringView(one.id); });
    return found == kinds.end() ? nullptr : &*found;
}
