#include "MappedFile.h"

#include "RecordFormat.h"

#include <cerrno>
#include <cstring>
#include <ctime>
#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace tarnwick::records
{
namespace
{

/// A file descriptor that is closed at the end of its scope unless somebody took it.
class Descriptor
{
public:
    explicit Descriptor(int number) : m_number(number) {}
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;
    int Number() const { return m_number; }
    int Take() { return std::exchange(m_number, -1); }

private:
    int m_number;
};

[[noreturn]] void Fail(const std::string& path, int error)
{
    if (error == ENOENT || error == ENOTDIR)
        throw RecordError("The data file '" + path + "' does not exist.");
    throw RecordError("The data file '" + path + "' cannot be read: " + std::strerror(error) + ".");
}

std::int64_t Nanoseconds(const timespec& time)
{
    return time.tv_sec * 1'000'000'000 + time.tv_nsec;
}

} // namespace

std::shared_ptr<const MappedFile> MappedFile::Open(const std::string& path)
{
    // Opening a pipe without O_NONBLOCK would wait for its writer.
    Descriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NOCTTY | O_NONBLOCK));
    if (file.Number() < 0)
        Fail(path, errno);
    struct stat status {
    };
    if (::fstat(file.Number(), &status) != 0)
        Fail(path, errno);
    if (!S_ISREG(status.st_mode))
        throw RecordError("The data file '" + path + "' is no file of records but " +
                          (S_ISDIR(status.st_mode) ? "a folder." : "a device or a pipe."));
    const auto size = static_cast<std::size_t>(status.st_size);
    std::string_view content;
    if (size > 0) {
        void* const mapped = ::mmap(nullptr, size, PROT_READ, MAP_SHARED, file.Number(), 0);
        if (mapped == MAP_FAILED)
            Fail(path, errno);
        ::madvise(mapped, size, MADV_SEQUENTIAL);
        content = std::string_view(static_cast<const char*>(mapped), size);
    }
    return std::shared_ptr<const MappedFile>(new MappedFile(path, file.Take(), content, status));
}

MappedFile::MappedFile(std::string path, int descriptor, std::string_view content, const struct stat& status)
    : m_path(std::move(path)), m_descriptor(descriptor), m_content(content), m_device(status.st_dev),
      m_node(status.st_ino), m_writtenAt(Nanoseconds(status.st_mtim))
{
    if (!m_content.empty())
        m_hasZeros = &cutguard::Add(m_content.data(), m_content.size());
}

MappedFile::~MappedFile()
{
    ::close(m_descriptor);
    if (m_content.empty())
        return;
    cutguard::Remove(m_content.data());
    ::munmap(const_cast<char*>(m_content.data()), m_content.size());
}

bool MappedFile::IsCurrent() const
{
    struct stat status {
    };
    return !m_wasCut && !HasZeros() && ::stat(m_path.c_str(), &status) == 0 && status.st_dev == m_device &&
           status.st_ino == m_node && static_cast<std::size_t>(status.st_size) == m_content.size();
}

bool MappedFile::WasCut(bool now) const
{
    m_wasCut = m_wasCut || HasZeros();
    timespec time{};
    ::clock_gettime(CLOCK_MONOTONIC_COARSE, &time);
    const std::int64_t moment = Nanoseconds(time);
    if (m_wasCut || (!now && moment == m_askedAt))
        return m_wasCut;
    m_askedAt = moment;
    struct stat status {
    };
    m_wasCut = ::fstat(m_descriptor, &status) == 0 && static_cast<std::size_t>(status.st_size) < m_content.size();
    return m_wasCut;
}

bool MappedFile::HasKeptItsContent() const
{
    struct stat status {
    };
    return ::fstat(m_descriptor, &status) == 0 && static_cast<std::size_t>(status.st_size) == m_content.size() &&
           Nanoseconds(status.st_mtim) == m_writtenAt;
}

std::shared_ptr<const MappedFile> RecentFiles::Find(const std::string& path) const
{
    for (const std::shared_ptr<const MappedFile>& kept : m_files)
        if (kept && kept->Path() == path && kept->IsCurrent())
            return kept;
    return nullptr;
}

void RecentFiles::Keep(std::shared_ptr<const MappedFile> file)
{
    for (std::shared_ptr<const MappedFile>& kept : m_files)
        if (kept && kept->Path() == file->Path()) {
            kept = std::move(file);
            return;
        }
    m_files[m_next] = std::move(file);
    m_next = (m_next + 1) % most;
}

} // namespace tarnwick::records
