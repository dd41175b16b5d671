#pragma once

#include "CConnections.h"
#include "Findings.h"
#include "MainWindowFixture.h"

#include <array>

/// The engines of the interchange on the catalog of the main window's tests.
class EngineTest : public MainWindowTest
{
protected:
    void SetUp() override
    {
        MainWindowTest::SetUp();
        start();
        connection = CConnections::instance().Item(datasource);
        ASSERT_NE(connection, nullptr);
        statements.clear();
    }

    /// Findings as lines: "3 ERR FILE: text".
    static QStringList lines(const Findings& findings)
    {
        static constexpr std::array names{"ERR", "WRN", "XXX"};
        QStringList all;
        for (const Finding& one : findings.all())
            all.append(QString::number(one.line) + ' ' + QLatin1String(names[static_cast<std::size_t>(one.severity)]) +
                       ' ' + one.type + ": " + one.description);
        return all;
    }

    CConnection* connection = nullptr;
};
