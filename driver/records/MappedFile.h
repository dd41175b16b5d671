#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace tarnwick::records
{

/// The content of a data file, mapped for reading only. It is that of the moment in which it was mapped; bytes that
/// another program changes in place are seen. A file must not be cut while it is mapped: that ends the process, as it
/// does for every program that maps files.
class MappedFile
{
public:
    /// Throws RecordError with the path and the reason: the file is missing, is no regular file, or cannot be read.
    static std::shared_ptr<const MappedFile> Open(const std::string& path);

    ~MappedFile();
    MappedFile(const MappedFile&) = delete;
    MappedFile& operator=(const MappedFile&) = delete;

    std::string_view Content() const { return m_content; }

    /// Whether the path still leads to this file, in its size of then.
    bool IsCurrent() const;

private:
    MappedFile(std::string path, std::string_view content, unsigned long device, unsigned long node);

    std::string m_path;
    std::string_view m_content;
    unsigned long m_device;
    unsigned long m_node;
};

} // namespace tarnwick::records
