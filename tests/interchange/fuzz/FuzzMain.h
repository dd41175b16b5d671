#pragma once

#include <QApplication>

/// Called once by the fuzzer. The application object is left to the end of the process: what it would take down in its
/// destructor is gone by then.
extern "C" __attribute__((used)) inline int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    [[maybe_unused]] static const QApplication& application = *new QApplication(*argc, *argv);
    return 0;
}
