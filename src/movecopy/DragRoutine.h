#pragma once

#include "CMouseSleeper.h"
#include "DragItem.h"
#include "DragMode.h"
#include "Events.h"
#include "Routine.h"

#include <functional>
#include <memory>

namespace dao
{
class Database;
class Recordset;
} // namespace dao

/// An item that no node of the tree stands behind.
DragItem dragItem(const QString& type, const QStringList& keys);

/// Whether source and target agree in so many names from the datasource on, which the user is then told.
bool isSameSide(const DragItem& source, const DragItem& target, int names, const QString& box);

/// The same for two tables.
bool isSameTable(const DragItem& source, const DragItem& target);

/// The names on the path of a table, or of what lies below one.
struct TablePath {
    explicit TablePath(const DragItem& item)
        : datasource(item.Keys.at(0)), database(item.Keys.at(1)), table(item.Keys.at(2))
    {
    }

    DragItem item() const { return dragItem(QStringLiteral("ta"), {datasource, database, table}); }
    DragItem below(const QString& type, const QString& name) const
    {
        return dragItem(type, {datasource, database, table, name});
    }

    QString datasource;
    QString database;
    QString table;
};

/// What all routines of a drop have in common: the trap, the mode, and the connections of both sides, which are looked
/// up among the open ones unless the caller hands them over.
class DragRoutine
{
public:
    /// What differs between the routines from the start; the names are literals.
    struct Names {
        const char* routine;
        /// What reports show where that differs.
        const char* reportedAs = nullptr;
    };

    DragRoutine(const DragRoutine&) = delete;
    DragRoutine& operator=(const DragRoutine&) = delete;

    /// Runs the body under the routine's trap and returns what it returns; false after an Ignore.
    bool run(const std::function<bool()>& body);

    DragMode mode() const { return m_mode; }

protected:
    DragRoutine(Names names, const DragItem& source, const DragItem& target, DragMode mode, dao::Database* sourceDb,
                dao::Database* targetDb);
    ~DragRoutine() = default;

    /// Looks the connections up that the caller has not handed over. False where a side has none that is open.
    bool connect();
    /// Asks whether to move or to copy, unless the caller knows. False for a stop.
    bool ask(const QString& question);

    std::unique_ptr<dao::Recordset> open(dao::Database& db, const QString& select);
    /// `shown` is what a report shows in place of the statement, unless empty.
    void execute(dao::Database& db, const QString& statement, const QString& shown = {});

    dao::Database* m_sourceDb = nullptr;
    dao::Database* m_targetDb = nullptr;

private:
    dao::Database* m_givenSourceDb;
    dao::Database* m_givenTargetDb;
    Routine m_routine;
    const CMouseSleeper m_sleeper;
    const events::LongRoutine m_pace;
    QString m_source;
    QString m_target;
    DragMode m_mode;
    QString m_statement;
};

/// A routine that carries one object: a row, and perhaps what hangs under it.
class ItemDrag : public DragRoutine
{
public:
    /// `type` is the one of the object's node, a literal.
    ItemDrag(const char* type, Names names, const DragItem& source, const DragItem& target, DragMode mode,
             dao::Database* sourceDb, dao::Database* targetDb);

    /// Finds the connections, asks if need be, and tells in the status line what goes on. False where the routine ends
    /// here.
    bool begin(const QString& question, const QString& status);

    /// Whether the target has a row for a statement.
    bool targetHas(const QString& select);
    /// Reads from one of the sides.
    std::unique_ptr<dao::Recordset> fromSource(const QString& select) { return open(*m_sourceDb, select); }
    std::unique_ptr<dao::Recordset> fromTarget(const QString& select) { return open(*m_targetDb, select); }

    /// Writes to the target. A statement that holds a password comes with what a report may show of it.
    void toTarget(const QString& statement, const QString& shown = {}) { execute(*m_targetDb, statement, shown); }
    /// Deletes from the source, if the object is moved.
    void afterMove(const QString& deletion);

    /// The end of a routine that did all it had to do: true.
    bool done();

private:
    QString m_node;
};

/// A routine that carries all objects of a collection, one by one.
class CollectionDrag : public DragRoutine
{
public:
    CollectionDrag(Names names, const DragItem& source, const DragItem& target, DragMode mode)
        : DragRoutine(names, source, target, mode, nullptr, nullptr)
    {
    }

    /// Asks if need be, then finds the connections. False where the routine ends here.
    bool begin(const QString& question);

    /// Carries each object by its name, the first column of the statement's rows on the source. One that fails brings
    /// up the question whether to go on, until the user has answered it for all.
    void each(const QString& select, const QString& whetherToGoOn, const std::function<bool(const QString&)>& carry);

    dao::Database* sourceDb() const { return m_sourceDb; }
    dao::Database* targetDb() const { return m_targetDb; }
};
