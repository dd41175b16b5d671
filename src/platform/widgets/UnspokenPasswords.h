#pragma once

/// Keeps typed passwords from assistive technology for as long as it lives: entries that hide what they hold tell of
/// each change of their text in clear, which every program on the accessibility bus can read. What is inserted or taken
/// away goes out as asterisks, as many as characters; everything else goes out as it is.
///
/// One lives at a time, from behind the application object on.
class UnspokenPasswords
{
public:
    UnspokenPasswords();
    ~UnspokenPasswords();
    UnspokenPasswords(const UnspokenPasswords&) = delete;
    UnspokenPasswords& operator=(const UnspokenPasswords&) = delete;
};
