#pragma once

#include <QApplication>

/// Called once by the fuzzer. The application object lives as long as the process.
extern "C" __attribute__((used)) inline int LLVMFuzzerInitialize(int* argc, char*** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    static QApplication application(*argc, *argv);
    return 0;
}
