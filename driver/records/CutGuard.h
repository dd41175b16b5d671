#pragma once

#include <atomic>
#include <cstddef>

namespace tarnwick::records
{

/// Reading a mapped page that its file no longer has raises SIGBUS, which ends the process unless somebody answers it.
/// While a mapping is guarded such pages are replaced by pages of zeros, and the reader goes on. Signals that are about
/// anything else go to the handler that was there before. A few hundred mappings can be guarded at a time; what is
/// beyond that is left as it was.
namespace cutguard
{

/// Of a mapping: whether a page of it was replaced since it was added.
using HasZeros = std::atomic<bool>;

const HasZeros& Add(const char* begin, std::size_t size);
void Remove(const char* begin);

} // namespace cutguard

} // namespace tarnwick::records
