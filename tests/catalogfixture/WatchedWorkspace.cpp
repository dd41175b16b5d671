#include "WatchedWorkspace.h"

#include "Database.h"
#include "Recordset.h"
#include "RuntimeError.h"
#include "Step.h"

#include <map>
#include <utility>

struct WatchedWorkspace::Orders {
    Closes closes;
    std::map<QString, int> breaks;
};

namespace
{

class BreakingRecordset final : public dao::Recordset
{
public:
    BreakingRecordset(std::unique_ptr<dao::Recordset> real, int rows) : m_real(std::move(real)), m_left(rows)
    {
        for (const dao::Field& field : m_real->Fields())
            addField(field);
    }

    bool Eof() const override { return m_real->Eof(); }
    void MoveNext() override
    {
        step([this] {
            if (m_left > 0 && --m_left == 0)
                breakOff();
            m_real->MoveNext();
        });
    }
    void MoveFirst() override { m_real->MoveFirst(); }
    void MoveLast() override
    {
        step([this] {
            if (std::exchange(m_left, 0) > 0)
                breakOff();
            m_real->MoveLast();
        });
    }
    long RecordCount() const override { return m_real->RecordCount(); }
    long AbsolutePosition() const override { return m_real->AbsolutePosition(); }
    QStringView View(int column, bool* isNull) const override { return m_real->View(column, isNull); }

private:
    static void breakOff()
    {
        dao::DBEngine::Errors().Clear();
        dao::DBEngine::Errors().Append({-1, "[Test] The rows broke off."});
        throw RuntimeError(ErrorNumber::OdbcFailed);
    }

    std::unique_ptr<dao::Recordset> m_real;
    int m_left;
};

template <class Orders>
class WatchedDatabase final : public dao::Database
{
public:
    WatchedDatabase(std::unique_ptr<dao::Database> real, std::shared_ptr<const Orders> orders)
        : m_real(std::move(real)), m_orders(std::move(orders))
    {
    }

    void Execute(const QString& statement) override { m_real->Execute(statement); }
    std::unique_ptr<dao::Recordset> OpenRecordset(const QString& statement, dao::RecordsetType type) override
    {
        auto rows = m_real->OpenRecordset(statement, type);
        const auto found = m_orders->breaks.find(statement);
        if (found == m_orders->breaks.end())
            return rows;
        return std::make_unique<BreakingRecordset>(std::move(rows), found->second);
    }
    void Close() override
    {
        if (m_orders->closes)
            m_orders->closes(Name());
        m_real->Close();
    }
    QString Name() const override { return m_real->Name(); }
    QString Connect() const override { return m_real->Connect(); }

private:
    std::unique_ptr<dao::Database> m_real;
    std::shared_ptr<const Orders> m_orders;
};

} // namespace

WatchedWorkspace::WatchedWorkspace(Closes closes)
    : m_real(dao::DBEngine::CreateWorkspace({}, {}, {}, 1)), m_orders(std::make_shared<Orders>())
{
    m_orders->closes = std::move(closes);
}

WatchedWorkspace::~WatchedWorkspace() = default;

void WatchedWorkspace::breakOffAfter(const QString& statement, int rows)
{
    m_orders->breaks[statement] = rows;
}

std::unique_ptr<dao::Database> WatchedWorkspace::OpenDatabase(const QString& name, const QString& connect)
{
    return std::make_unique<WatchedDatabase<Orders>>(m_real->OpenDatabase(name, connect), m_orders);
}
