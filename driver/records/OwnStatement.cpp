#include "OwnStatement.h"

namespace tarnwick::records
{
namespace
{

thread_local int running = 0;

} // namespace

OwnStatement::OwnStatement()
{
    ++running;
}

OwnStatement::~OwnStatement()
{
    --running;
}

bool OwnStatement::IsRunning()
{
    return running > 0;
}

} // namespace tarnwick::records
