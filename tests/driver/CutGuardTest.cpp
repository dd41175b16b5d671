// What becomes of a SIGBUS that is not about a guarded mapping. The guard looks once in a process at the handler that
// was there, so each case is a process of its own, made anew.

#include "MappedFile.h"

#include <gtest/gtest.h>

#include <csignal>
#include <cstdlib>
#include <sys/mman.h>
#include <unistd.h>

using namespace tarnwick::records;

namespace
{

constexpr int exitOfPlain = 7;
constexpr int exitOfInformed = 8;

volatile std::sig_atomic_t calls = 0;
const void* expectedAddress = nullptr;

/// A file without a name, which leaves nothing behind where a process ends at once.
class NamelessFile
{
public:
    NamelessFile() : m_descriptor(::memfd_create("records", 0))
    {
        if (::write(m_descriptor, "some bytes", 10) != 10)
            std::abort();
    }
    ~NamelessFile() { ::close(m_descriptor); }
    NamelessFile(const NamelessFile&) = delete;
    NamelessFile& operator=(const NamelessFile&) = delete;

    std::string Path() const { return "/proc/self/fd/" + std::to_string(m_descriptor); }
    int Descriptor() const { return m_descriptor; }
    void Clear() const
    {
        if (::ftruncate(m_descriptor, 0) != 0)
            std::abort();
    }

private:
    int m_descriptor;
};

void Handle(void (*handler)(int))
{
    struct sigaction action {
    };
    action.sa_handler = handler;
    ::sigaction(SIGBUS, &action, nullptr);
}

void Handle(void (*handler)(int, siginfo_t*, void*))
{
    struct sigaction action {
    };
    action.sa_sigaction = handler;
    action.sa_flags = SA_SIGINFO;
    ::sigaction(SIGBUS, &action, nullptr);
}

/// Sets the guard up behind the handler that is there, and reads a page that is gone from a file of somebody else's.
void FaultOutsideTheGuard()
{
    const NamelessFile guarded;
    const auto mapping = MappedFile::Open(guarded.Path());
    const NamelessFile other;
    const void* const page = ::mmap(nullptr, 10, PROT_READ, MAP_SHARED, other.Descriptor(), 0);
    other.Clear();
    expectedAddress = page;
    const volatile char first = *static_cast<const volatile char*>(page);
    ::_exit(first == 0 ? 1 : 2);
}

/// Sends the signal while a file is guarded; exits with 0 if the guard still does its work behind that.
void SendAndReadOn(int expectedCalls)
{
    const NamelessFile guarded;
    const auto mapping = MappedFile::Open(guarded.Path());
    ::raise(SIGBUS);
    guarded.Clear();
    const bool isZero = mapping->Content()[3] == '\0';
    ::_exit(isZero && mapping->HasZeros() && calls == expectedCalls ? 0 : 1);
}

/// Reads what lies behind the content but in its last page, as whoever reads several bytes at a time may do.
void ReadBehindTheContent()
{
    const NamelessFile guarded;
    const auto mapping = MappedFile::Open(guarded.Path());
    guarded.Clear();
    const volatile char* const behind = mapping->Content().data() + mapping->Content().size() + 5;
    ::_exit(*behind == '\0' && mapping->HasZeros() ? 0 : 1);
}

class CutGuardDeathTest : public ::testing::Test
{
protected:
    void SetUp() override { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

} // namespace

TEST_F(CutGuardDeathTest, SignalsOfOthersEndTheProcessWhereNobodyHandlesThem)
{
    EXPECT_EXIT((Handle(SIG_DFL), FaultOutsideTheGuard()), ::testing::KilledBySignal(SIGBUS), "");
    EXPECT_EXIT((Handle(SIG_DFL), SendAndReadOn(0)), ::testing::KilledBySignal(SIGBUS), "");
}

TEST_F(CutGuardDeathTest, SignalsOfOthersGoToThePlainHandlerOfBefore)
{
    const auto end = [](int signal) { ::_exit(signal == SIGBUS ? exitOfPlain : 1); };
    EXPECT_EXIT((Handle(+end), FaultOutsideTheGuard()), ::testing::ExitedWithCode(exitOfPlain), "");
    const auto count = [](int) { calls = calls + 1; };
    EXPECT_EXIT((Handle(+count), SendAndReadOn(1)), ::testing::ExitedWithCode(0), "");
}

TEST_F(CutGuardDeathTest, SignalsOfOthersGoToTheHandlerOfBeforeWithWhatItIsToldOfThem)
{
    const auto end = [](int signal, siginfo_t* info, void* context) {
        const bool isWhole = signal == SIGBUS && info->si_code > 0 && info->si_addr == expectedAddress && context;
        ::_exit(isWhole ? exitOfInformed : 1);
    };
    EXPECT_EXIT((Handle(+end), FaultOutsideTheGuard()), ::testing::ExitedWithCode(exitOfInformed), "");
    const auto count = [](int, siginfo_t* info, void*) { calls = calls + (info->si_code <= 0 ? 1 : 100); };
    EXPECT_EXIT((Handle(+count), SendAndReadOn(1)), ::testing::ExitedWithCode(0), "");
}

TEST_F(CutGuardDeathTest, TheGuardReachesToTheEndOfTheLastPage)
{
    EXPECT_EXIT(ReadBehindTheContent(), ::testing::ExitedWithCode(0), "");
}

TEST_F(CutGuardDeathTest, AnIgnoredSignalLeavesTheGuardInItsPlace)
{
    EXPECT_EXIT((Handle(SIG_IGN), SendAndReadOn(0)), ::testing::ExitedWithCode(0), "");
    EXPECT_EXIT((Handle(SIG_IGN), FaultOutsideTheGuard()), ::testing::KilledBySignal(SIGBUS), "");
}
