#include "RoutineNames.h"

#include <set>
#include <string>

const char* routineName(const char* form, const char* operation)
{
    static std::set<std::string> names;
    return names.insert(std::string(form) + '.' + operation).first->c_str();
}
