#pragma once

#include <string>
#include <utility>
#include <vector>

namespace tarnwick
{

/// An ini file of the driver manager, changed section by section with everything else kept as it stands.
class IniFile
{
public:
    /// Reads the file if it is there.
    explicit IniFile(std::string path);

    /// Puts a section in the place of the one of that name, or behind the last.
    void SetSection(const std::string& name, const std::vector<std::pair<std::string, std::string>>& entries);

    /// Writes the file if it has changed. Throws std::runtime_error if it cannot.
    void Save();

private:
    std::string m_path;
    std::vector<std::string> m_lines;
    std::vector<std::string> m_saved;
};

} // namespace tarnwick
