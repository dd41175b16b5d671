#pragma once

#include "CutGuard.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

struct stat;

namespace tarnwick::records
{

/// The content of a data file, mapped for reading only. It is that of the moment in which it was mapped; bytes that
/// another program changes in place are seen. Of a file that another program cuts, what is gone reads as zero bytes,
/// and `WasCut` tells so.
class MappedFile
{
public:
    /// Throws RecordError with the path and the reason: the file is missing, is no regular file, or cannot be read.
    static std::shared_ptr<const MappedFile> Open(const std::string& path);

    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view Content() const { return m_content; }
    const std::string& Path() const { return m_path; }

    /// Whether the path still leads to this file, in its size of then.
    bool IsCurrent() const;

    /// Whether zeros were read in place of something that could not be read any more. Costs nothing.
    bool HasZeros() const { return m_hasZeros && m_hasZeros->load(std::memory_order_relaxed); }

    /// Whether the file was cut since it was mapped, or zeros were read of it. Without `now`, what was found a few
    /// milliseconds ago counts still, so that the question can be asked for each record. One thread at a time may ask.
    bool WasCut(bool now) const;

    /// Whether the file is still as large and as old as it was when it was mapped. Zeros that were read of such a one
    /// stand for what its disk did not give.
    bool HasKeptItsContent() const;

private:
    MappedFile(std::string path, int descriptor, std::string_view content, const struct stat& status);

    std::string m_path;
    int m_descriptor;
    std::string_view m_content;
    const cutguard::HasZeros* m_hasZeros = nullptr; ///< null for an empty file
    unsigned long m_device;
    unsigned long m_node;
    std::int64_t m_writtenAt;           ///< nanoseconds since 1970
    mutable std::int64_t m_askedAt = 0; ///< nanoseconds of a coarse clock
    mutable bool m_wasCut = false;
};

/// The files that were opened last on a connection, kept for the next statements that read them. Nothing else keeps a
/// file beyond the statement that reads it, so that a connection holds no more of them than it needs, however many
/// tables it comes to read. For one thread at a time.
class RecentFiles
{
public:
    static constexpr std::size_t most = 8;

    /// The file that was opened at a path, if it still stands there in its size of then; else null.
    std::shared_ptr<const MappedFile> Find(const std::string& path) const;

    /// Keeps a file in place of the one that stood at its path before, or else of the one that was opened first.
    void Keep(std::shared_ptr<const MappedFile> file);

private:
    std::array<std::shared_ptr<const MappedFile>, most> m_files;
    std::size_t m_next = 0;
};

} // namespace tarnwick::records
