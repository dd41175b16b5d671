#pragma once

#include <sql.h>

#include <atomic>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace tarnwick
{

/// Something kept beside some statements, found by their handles. The table may be used from any thread; what it gives
/// belongs to the one statement, which ODBC lets only one thread use at a time. While nothing is kept, finding nothing
/// costs one atomic read.
template <typename Value>
class StatementTable
{
public:
    /// Null if nothing is kept for the statement.
    Value* Find(SQLHSTMT statement)
    {
        if (m_size.load(std::memory_order_acquire) == 0)
            return nullptr;
        const std::shared_lock lock(m_mutex);
        const auto found = m_values.find(statement);
        return found == m_values.end() ? nullptr : found->second.get();
    }

    /// What is kept for the statement, made if there is nothing yet.
    Value& Ensure(SQLHSTMT statement)
    {
        if (Value* found = Find(statement))
            return *found;
        const std::unique_lock lock(m_mutex);
        auto& value = m_values[statement];
        if (!value)
            value = std::make_unique<Value>();
        m_size.store(m_values.size(), std::memory_order_release);
        return *value;
    }

    void Erase(SQLHSTMT statement)
    {
        if (m_size.load(std::memory_order_acquire) == 0)
            return;
        const std::unique_lock lock(m_mutex);
        m_values.erase(statement);
        m_size.store(m_values.size(), std::memory_order_release);
    }

private:
    std::shared_mutex m_mutex;
    std::unordered_map<SQLHSTMT, std::unique_ptr<Value>> m_values;
    std::atomic<std::size_t> m_size{0};
};

} // namespace tarnwick
