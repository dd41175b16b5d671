#include "CutGuard.h"

#include <algorithm>
#include <array>
#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdint>
#include <mutex>
#include <sys/mman.h>
#include <unistd.h>

namespace tarnwick::records::cutguard
{
namespace
{

/// The handler may only look at what is there already and takes no lock; so there is room for a fixed number.
struct Guarded {
    std::atomic<std::uintptr_t> begin{0}; ///< 0 for a free place
    std::atomic<std::size_t> size{0};
    HasZeros hasZeros{false};
};

std::array<Guarded, 512> places;
std::mutex placesMutex; ///< of those who change `places`

const HasZeros neverHasZeros{false}; ///< of mappings that are not guarded

struct sigaction previous;
std::uintptr_t pageSize;

std::uintptr_t PageOf(std::uintptr_t address)
{
    return address & ~(pageSize - 1);
}

/// Puts zeros from the page of an address to the end of its mapping.
bool Replace(std::uintptr_t address)
{
    for (Guarded& place : places) {
        const std::uintptr_t begin = place.begin.load(std::memory_order_acquire);
        // A mapping reaches to the end of its last page.
        const std::uintptr_t end = PageOf(begin + place.size.load(std::memory_order_acquire) + pageSize - 1);
        if (begin == 0 || address < begin || address >= end)
            continue;
        // Another thread may have given the place to another mapping in between, and the size was that one's.
        if (place.begin.load(std::memory_order_acquire) != begin)
            continue;
        place.hasZeros.store(true, std::memory_order_relaxed);
        const std::uintptr_t page = PageOf(address);
        return ::mmap(reinterpret_cast<void*>(page), end - page, PROT_READ, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED, -1,
                      0) != MAP_FAILED;
    }
    return false;
}

/// Lets the signal do what it would have done. A faulty access is tried again behind the handler; a signal that
/// somebody sent is sent again, unless such ones are ignored: then the guard stays.
void EndAsBefore(const siginfo_t* info)
{
    if (info->si_code <= 0 && previous.sa_handler == SIG_IGN)
        return;
    ::sigaction(SIGBUS, &previous, nullptr);
    if (info->si_code <= 0)
        ::raise(SIGBUS);
}

void HandOn(int signal, siginfo_t* info, void* context)
{
    if ((previous.sa_flags & SA_SIGINFO) != 0)
        previous.sa_sigaction(signal, info, context);
    else if (previous.sa_handler == SIG_DFL || previous.sa_handler == SIG_IGN)
        EndAsBefore(info);
    else
        previous.sa_handler(signal);
}

void OnSignal(int signal, siginfo_t* info, void* context)
{
    const int error = errno;
    if (info->si_code <= 0 || !Replace(reinterpret_cast<std::uintptr_t>(info->si_addr)))
        HandOn(signal, info, context);
    errno = error;
}

void Install()
{
    pageSize = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    struct sigaction action {
    };
    action.sa_sigaction = OnSignal;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigemptyset(&action.sa_mask);
    ::sigaction(SIGBUS, &action, &previous);
}

} // namespace

const HasZeros& Add(const char* begin, std::size_t size)
{
    static std::once_flag installed;
    std::call_once(installed, Install);
    const std::lock_guard lock(placesMutex);
    const auto free = std::find_if(places.begin(), places.end(), [](const Guarded& place) {
        return place.begin.load(std::memory_order_relaxed) == 0;
    });
    if (free == places.end())
        return neverHasZeros;
    free->size.store(size, std::memory_order_release);
    free->hasZeros.store(false, std::memory_order_relaxed);
    free->begin.store(reinterpret_cast<std::uintptr_t>(begin), std::memory_order_release);
    return free->hasZeros;
}

void Remove(const char* begin)
{
    const std::lock_guard lock(placesMutex);
    for (Guarded& place : places)
        if (place.begin.load(std::memory_order_relaxed) == reinterpret_cast<std::uintptr_t>(begin)) {
            place.size.store(0, std::memory_order_release);
            place.begin.store(0, std::memory_order_release);
        }
}

} // namespace tarnwick::records::cutguard
