#include "IniFile.h"

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <stdexcept>

namespace tarnwick
{

IniFile::IniFile(std::string path) : m_path(std::move(path))
{
    std::ifstream file(m_path);
    for (std::string line; std::getline(file, line);)
        m_lines.push_back(line);
    m_saved = m_lines;
}

void IniFile::SetSection(const std::string& name, const std::vector<std::pair<std::string, std::string>>& entries)
{
    std::vector<std::string> section = {"[" + name + "]"};
    for (const auto& [key, value] : entries)
        section.push_back(key + " = " + value);
    auto begin = std::find(m_lines.begin(), m_lines.end(), section.front());
    auto end = begin;
    if (begin != m_lines.end()) {
        end = std::find_if(begin + 1, m_lines.end(), [](const std::string& line) { return line.starts_with('['); });
        while (end - begin > 1 && (end - 1)->empty())
            --end;
    } else if (!m_lines.empty() && !m_lines.back().empty()) {
        section.insert(section.begin(), "");
    }
    const auto place = m_lines.erase(begin, end);
    m_lines.insert(place, section.begin(), section.end());
}

void IniFile::Save()
{
    if (m_lines == m_saved)
        return;
    const std::string fresh = m_path + ".new";
    std::ofstream file(fresh);
    for (const std::string& line : m_lines)
        file << line << '\n';
    file.close();
    if (!file || std::rename(fresh.c_str(), m_path.c_str()) != 0)
        throw std::runtime_error("Cannot write " + m_path);
    m_saved = m_lines;
}

} // namespace tarnwick
