#pragma once

#include <cstddef>

namespace tarnwick::records
{

/// Reading a mapped page that its file no longer has raises SIGBUS, which ends the process unless somebody answers it.
/// While a mapping is guarded such pages are replaced by pages of zeros, and the reader goes on. Signals that are about
/// anything else go to the handler that was there before. A few hundred mappings can be guarded at a time; what is
/// beyond that is left as it was.
namespace cutguard
{

/// The mapping's place among the guarded ones, or `none`.
using Place = int;
constexpr Place none = -1;

Place Add(const char* begin, std::size_t size);
void Remove(Place place);

/// Whether a page of the mapping was replaced since it was added.
bool HasZeros(Place place);

} // namespace cutguard

} // namespace tarnwick::records
