#pragma once

/// Shows the wait pointer for as long as it lives, and the former pointer afterwards unless someone else has changed
/// it.
class CMouseSleeper
{
public:
    CMouseSleeper();
    ~CMouseSleeper();
    CMouseSleeper(const CMouseSleeper&) = delete;
    CMouseSleeper& operator=(const CMouseSleeper&) = delete;

private:
    int m_pointer;
};
