#pragma once

#include <sql.h>

#include <atomic>
#include <cstdint>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace tarnwick
{

/// Something kept beside some statements, found by their handles; one table for each kind of value. It may be used from
/// any thread; what it gives belongs to the one statement, which ODBC lets only one thread use at a time. Each thread
/// remembers what it found last, since cells are asked for in long runs on one statement.
template <typename Value>
class StatementTable
{
public:
    /// Null if nothing is kept for the statement.
    Value* Find(SQLHSTMT statement)
    {
        if (m_size.load(std::memory_order_acquire) == 0)
            return nullptr;
        const std::uint64_t erased = m_erased.load(std::memory_order_acquire);
        if (t_last.statement == statement && t_last.erased == erased)
            return t_last.value;
        const std::shared_lock lock(m_mutex);
        const auto found = m_values.find(statement);
        if (found == m_values.end())
            return nullptr;
        t_last = {statement, found->second.get(), erased};
        return found->second.get();
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
        if (m_values.erase(statement) > 0)
            m_erased.fetch_add(1, std::memory_order_release);
        m_size.store(m_values.size(), std::memory_order_release);
    }

private:
    struct Last {
        SQLHSTMT statement = nullptr;
        Value* value = nullptr;
        std::uint64_t erased = 0; ///< it holds while nothing has been taken out since
    };
    static inline thread_local Last t_last;

    std::shared_mutex m_mutex;
    std::unordered_map<SQLHSTMT, std::unique_ptr<Value>> m_values;
    std::atomic<std::size_t> m_size{0};
    std::atomic<std::uint64_t> m_erased{0};
};

} // namespace tarnwick
