#include "Lower.h"

#include <cstdlib>
#include <dlfcn.h>
#include <vector>

namespace tarnwick
{

const Lower lower;

namespace
{

/// Where the library may be: the place found when this driver was built, then the folders in which the distributions
/// keep ODBC drivers, then wherever the loader looks. The environment variable names another one and is then the only
/// candidate.
std::vector<std::string> Candidates()
{
    if (const char* named = ::secure_getenv("TARNWICK_SQLITE_ODBC"))
        return {named};
    return {TARNWICK_SQLITE_ODBC_PATH,          "/usr/lib/" TARNWICK_LIBRARY_ARCHITECTURE "/odbc/libsqlite3odbc.so",
            "/usr/lib/odbc/libsqlite3odbc.so",  "/usr/lib64/libsqlite3odbc.so",
            "/usr/local/lib/libsqlite3odbc.so", "libsqlite3odbc.so"};
}

void* Load(std::string& failure)
{
    for (const std::string& candidate : Candidates()) {
        if (candidate.empty())
            continue;
        if (void* library = ::dlopen(candidate.c_str(), RTLD_NOW | RTLD_LOCAL))
            return library;
        if (failure.empty())
            failure = std::string("The SQLite ODBC driver (libsqlite3odbc.so) cannot be loaded: ") + ::dlerror();
    }
    return nullptr;
}

} // namespace

Lower::Lower()
{
    std::string failure;
    void* const library = Load(failure);
    if (!library) {
        m_failure = failure;
        return;
    }
    const auto resolve = [&](auto& function, const char* name) {
        void* const symbol = ::dlsym(library, name);
        if (symbol)
            function = reinterpret_cast<std::remove_reference_t<decltype(function)>>(symbol);
        else
            m_failure = std::string("The SQLite ODBC driver lacks the function ") + name + ".";
    };
#define X(name) resolve(name, #name);
    TARNWICK_LOWER_FUNCTIONS(X)
#undef X
}

} // namespace tarnwick
