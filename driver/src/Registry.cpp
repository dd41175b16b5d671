#include "Registry.h"

#include <map>
#include <mutex>
#include <shared_mutex>
#include <unordered_map>

namespace tarnwick::registry
{
namespace
{

struct State {
    std::shared_mutex mutex;
    std::map<SQLHDBC, std::shared_ptr<const Connection>> connections;
    std::unordered_map<SQLHSTMT, SQLHDBC> statements;
};

State& TheState()
{
    static State state;
    return state;
}

} // namespace

void OpenConnection(SQLHDBC handle, std::shared_ptr<const Connection> connection)
{
    State& state = TheState();
    const std::unique_lock lock(state.mutex);
    state.connections[handle] = std::move(connection);
}

std::vector<SQLHSTMT> CloseConnection(SQLHDBC handle)
{
    std::vector<SQLHSTMT> closed;
    State& state = TheState();
    const std::unique_lock lock(state.mutex);
    state.connections.erase(handle);
    std::erase_if(state.statements, [&](const auto& entry) {
        if (entry.second != handle)
            return false;
        closed.push_back(entry.first);
        return true;
    });
    return closed;
}

std::shared_ptr<const Connection> FindConnection(SQLHDBC handle)
{
    State& state = TheState();
    const std::shared_lock lock(state.mutex);
    const auto found = state.connections.find(handle);
    return found == state.connections.end() ? nullptr : found->second;
}

void AddStatement(SQLHSTMT statement, SQLHDBC connection)
{
    State& state = TheState();
    const std::unique_lock lock(state.mutex);
    state.statements[statement] = connection;
}

void RemoveStatement(SQLHSTMT statement)
{
    State& state = TheState();
    const std::unique_lock lock(state.mutex);
    state.statements.erase(statement);
}

std::shared_ptr<const Connection> ConnectionOf(SQLHSTMT statement)
{
    State& state = TheState();
    const std::shared_lock lock(state.mutex);
    const auto owner = state.statements.find(statement);
    if (owner == state.statements.end())
        return nullptr;
    const auto found = state.connections.find(owner->second);
    return found == state.connections.end() ? nullptr : found->second;
}

} // namespace tarnwick::registry
