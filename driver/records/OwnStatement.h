#pragma once

namespace tarnwick::records
{

/// The driver's own statements, which no user's rights limit, while one of these lives on the thread. They only read,
/// what the catalog holds or how it is made up: what a criteria in them calls must not reach beyond the catalog.
class OwnStatement
{
public:
    OwnStatement();
    ~OwnStatement();
    OwnStatement(const OwnStatement&) = delete;
    OwnStatement& operator=(const OwnStatement&) = delete;

    static bool IsRunning();
};

} // namespace tarnwick::records
