#pragma once

#include "LongNumbers.h"
#include "RecordModule.h"

#include <atomic>
#include <cstdint>
#include <map>
#include <memory>
#include <mutex>
#include <set>
#include <string>
#include <string_view>
#include <vector>

struct sqlite3;

namespace tarnwick::records
{

/// The tables over records of one connection. Definitions are read from the catalog, through the same connection, each
/// time that a statement names their table; so a definition that was just changed, committed or not, counts at once.
/// Every function may be called from any thread.
class RecordTables
{
public:
    /// The object must outlive the engine's statements. Throws RecordError if SQLite cannot be asked what it has.
    RecordTables(sqlite3* engine, Surroundings surroundings, BadFields badFields);
    RecordTables(const RecordTables&) = delete;
    RecordTables& operator=(const RecordTables&) = delete;

    /// Makes ready what a statement names behind FROM, JOIN and the like, and what the views and criteria that it names
    /// ask for. A table without a definition is withdrawn; trouble with one is kept for SQLite to report when it is
    /// used. Throws RecordError if the catalog cannot be read.
    void MakeReady(std::string_view statement);

    /// The statement with the numbers quoted that are compared with decimal columns of tables that it or a view in it
    /// names and that are ready, and that are too long for SQLite (see LongNumbers.h). Throws RecordError if the
    /// catalog cannot be read.
    std::string WithExactNumbers(std::string statement) const;

    /// How often a table was defined anew or withdrawn: what was prepared before goes by definitions of before.
    std::uint64_t Changes() const { return m_changes.load(std::memory_order_acquire); }

    /// A table that was made ready, by its name in any case; null if there is none.
    std::shared_ptr<const RecordTable> Find(std::string_view name) const;

    /// The names of the tables that match a pattern of LIKE with `\` as its escape character, all of them ready; of all
    /// tables if there is no pattern. The views over them are as they were until the next MakeReady.
    std::vector<std::string> MakeReadyLike(const std::string* pattern);

private:
    /// Names in upper case that were seen to: definitions may name one another.
    using Names = std::set<std::string>;

    using Tables = std::map<std::string, std::shared_ptr<const RecordTable>>; ///< by their names in upper case

    void MakeTableReady(const std::string& name, Names& done, const TableKey* key = nullptr);
    void MakeNamesReady(std::string_view statement, Names& done);

    /// The same for what a criteria asks: it may also call tables by the names of their databases and their own,
    /// joined, where clients, who are served one database's tables, may not.
    void MakeCriteriaReady(std::string_view criteria, Names& done);

    /// Publishes the table that `name` means in some surroundings, if it is not in `tables` as it is defined now. Its
    /// place in the catalog is searched for if it is not given.
    void Renew(const std::string& name, const Surroundings& surroundings, Tables& tables, Readers readers, Names& done,
               const TableKey* key = nullptr);

    /// Null takes a table out.
    void Put(Tables& tables, const std::string& name, const std::shared_ptr<const RecordTable>& table);
    void CollectDecimals(std::string_view statement, Names& done, Names& columns, Namesakes& namesakes) const;
    void WithdrawTable(const RecordTable& table);

    /// Has the views go by the tables as they are now, if any has changed. SQLite works the columns of a view out once.
    void RenewViews();
    std::shared_ptr<const RecordTable> FindIn(const Tables& tables, std::string_view name) const;

    sqlite3* m_engine;
    Surroundings m_surroundings;
    BadFields m_badFields;
    std::atomic<std::uint64_t> m_changes{0};
    Names m_engines; ///< of SQLite's own functions that give rows, whose place no table takes
    std::shared_ptr<RecentFiles> m_recentFiles = std::make_shared<RecentFiles>();
    Tables m_tables;
    Tables m_joined;              ///< those that only criteria may read
    bool m_viewsAreOld = false;   ///< a table was replaced or withdrawn that a view may have been made of
    bool m_renewedMidway = false; ///< the views were renewed in a transaction, which may be taken back

    /// One thread at a time makes ready, from the reading of a definition to its table: an older definition, read by
    /// another thread, never takes the place of a newer one. SQLite is called meanwhile; so what it calls back into
    /// must not wait for this.
    std::mutex m_makingReady;

    /// Guards the tables, and is never held while SQLite is called: SQLite calls back into `Find` under its own lock.
    mutable std::mutex m_mutex;
};

/// The names in a statement that stand where a table may be named, without their quotes; those of the catalog's own
/// tables and of SQLite's are left out.
std::vector<std::string> TablesNamedIn(std::string_view statement);

} // namespace tarnwick::records
