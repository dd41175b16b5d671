#pragma once

#include "CConnections.h"
#include "CatalogFixture.h"
#include "ScriptedErrorForm.h"
#include "StatementRecorder.h"

#include <gtest/gtest.h>

#include <functional>
#include <vector>

/// A catalog that holds one small world of files, databases and users, and nothing else:
///
///     file ORDERS with the fields AMOUNT and ORDER-ID, mapped by SALES.LINES and SALES.ORDERS; file PARTS with one
///     field AMOUNT, mapped by STOCK.PARTS
///     databases SALES and STOCK; SALES.LINES has one column, SALES.ORDERS two, STOCK.PARTS one
///     users ANN (privileges on SALES, on its table ORDERS, and on STOCK) and BOB (on SALES)
class UpdateFixture : public testing::Test
{
protected:
    UpdateFixture();
    ~UpdateFixture() override;

    /// Puts the world back as it was in the beginning.
    void restore();
    /// Sends statements past the program.
    void run(const QStringList& changes) const;
    /// Every row of the eight tables, as one line each, sorted.
    QStringList catalog() const;
    /// The catalog as these statements leave it, sent past the program to a fresh world; the world is fresh again
    /// afterwards.
    QStringList catalogAfter(const QStringList& changes);
    QString value(const QString& select) const { return world.value(datasource, select); }

    /// What the program sends while it runs this.
    QStringList sentBy(const std::function<void()>& update);

    /// A call of each of the eight routines: with the names of the world, and what changes when all goes well.
    struct Update {
        const char* name;
        std::function<void()> call;
        QStringList changes;
    };
    std::vector<Update> updates() const;
    /// The same calls with equal old and new names.
    std::vector<Update> rewrites() const;

    CConnections& connections = CConnections::instance();
    CatalogFixture world;
    const QString datasource;
    StatementRecorder statements;
    ScriptedErrorForm form;

private:
    void keepTheWorld() const;
};

inline std::string lines(const QStringList& texts)
{
    return texts.join('\n').toStdString();
}
