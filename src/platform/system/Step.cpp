#include "Step.h"

namespace
{

StepTrap* innermost = nullptr;

} // namespace

StepTrap* StepTrap::current()
{
    return innermost;
}

StepTrap::StepTrap() : m_outer(innermost)
{
    innermost = this;
}

StepTrap::~StepTrap()
{
    innermost = m_outer;
}
