#include "DragRoutine.h"

#include "Boxes.h"
#include "CConnections.h"
#include "Database.h"
#include "Departures.h"
#include "NodeKeys.h"
#include "Recordset.h"
#include "frmMoveCopy.h"
#include "frmYesToAll.h"
#include "mdiMain.h"

using namespace Qt::StringLiterals;

namespace
{

/// The open database of a datasource, or null.
dao::Database* openDatabase(const QString& datasource)
{
    const CConnection* connection = CConnections::instance().find(datasource);
    return connection ? connection->db() : nullptr;
}

} // namespace

DragItem dragItem(const QString& type, const QStringList& keys)
{
    DragItem item;
    item.NodeType = type;
    item.Keys = keys;
    return item;
}

bool isSameSide(const DragItem& source, const DragItem& target, int names, const QString& box)
{
    if (source.Keys.first(names) != target.Keys.first(names))
        return false;
    boxes::inform(box);
    return true;
}

bool isSameTable(const DragItem& source, const DragItem& target)
{
    return isSameSide(source, target, 3, u"The source and the destination Table are the same"_s);
}

DragRoutine::DragRoutine(Names names, const DragItem& source, const DragItem& target, DragMode mode,
                         dao::Database* sourceDb, dao::Database* targetDb)
    : m_givenSourceDb(sourceDb), m_givenTargetDb(targetDb), m_routine(names.routine, names.reportedAs),
      m_source(source.Keys.value(0)), m_target(target.Keys.value(0)), m_mode(mode)
{
    m_routine.additional([this] { return m_statement.isEmpty() ? u"None"_s : m_statement; });
}

bool DragRoutine::run(const std::function<bool()>& body)
{
    bool result = false;
    m_routine.run([&] { result = body(); });
    return result;
}

bool DragRoutine::connect()
{
    m_sourceDb = m_givenSourceDb ? m_givenSourceDb : openDatabase(m_source);
    m_targetDb = m_givenTargetDb ? m_givenTargetDb : openDatabase(m_target);
    return m_sourceDb && m_targetDb;
}

bool DragRoutine::ask(const QString& question)
{
    if (m_mode == DragMode::Ask)
        m_mode = frmMoveCopy::Query(question);
    return m_mode != DragMode::Stop;
}

std::unique_ptr<dao::Recordset> DragRoutine::open(dao::Database& db, const QString& select)
{
    m_statement = select;
    return db.OpenRecordset(select);
}

void DragRoutine::execute(dao::Database& db, const QString& statement, const QString& shown)
{
    m_statement = shown.isEmpty() ? statement : shown;
    db.Execute(statement);
}

ItemDrag::ItemDrag(const char* type, Names names, const DragItem& source, const DragItem& target, DragMode mode,
                   dao::Database* sourceDb, dao::Database* targetDb)
    : DragRoutine(names, source, target, mode, sourceDb, targetDb),
      m_node(nodekeys::of(QLatin1StringView(type), source.Keys))
{
}

bool ItemDrag::begin(const QString& question, const QString& status)
{
    // A connection may have gone while the question was up.
    if (!connect() || !ask(question) || !connect())
        return false;
    mdiMain::instance().Status(status);
    return true;
}

bool ItemDrag::targetHas(const QString& select)
{
    return !fromTarget(select)->Eof();
}

void ItemDrag::afterMove(const QString& deletion)
{
    if (mode() != DragMode::Move)
        return;
    execute(*m_sourceDb, deletion);
    Departures::note(m_node);
}

bool ItemDrag::done()
{
    mdiMain::instance().Status(u"Ready"_s);
    return true;
}

bool CollectionDrag::begin(const QString& question)
{
    return ask(question) && connect();
}

void CollectionDrag::each(const QString& select, const QString& whetherToGoOn,
                          const std::function<bool(const QString&)>& carry)
{
    std::int32_t goOn = 1;
    for (const auto rows = open(*m_sourceDb, select); !rows->Eof(); rows->MoveNext()) {
        if (carry(rows->Fields().Item(0).Value().Text()))
            continue;
        if (goOn == 1)
            goOn = frmYesToAll::GetAnswer(whetherToGoOn);
        if (goOn == 0)
            return;
    }
}
