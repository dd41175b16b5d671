#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

struct sqlite3;

namespace tarnwick::records
{

/// What a user may do with the catalog's tables and with those over records. `ADMIN`, and whoever gives no name, may do
/// everything, whatever the catalog holds. Any other user has the rights that the catalog gave when the connection was
/// opened: those of its row for the database or, at the security level `TABLE`, those of its row for the table. A name
/// is given in any case, but where the catalog has users who differ only in that, each has its own rights: the name in
/// just the given case goes first, and `Admin` is `ADMIN` only if there is no user of that name. The
/// catalog's tables are those of the database `TW`. Nobody but `ADMIN` changes how the catalog's file is made up.
class Privileges
{
public:
    /// A database and a table of the catalog.
    using Place = std::pair<std::string, std::string>;
    /// Tells which table of the catalog a name is; nothing for the name of any other thing.
    using Locate = std::function<std::optional<Place>(std::string_view)>;

    /// Reads the rights of a user. Throws RecordError if the catalog cannot be read.
    Privileges(sqlite3* engine, std::string user, Locate locate);

    /// Holds the statements of the connection to the rights from now on. The object must outlive the connection.
    void Guard();

    /// Whose rights they are, as the catalog spells the name if it knows it.
    std::string User() const;

    bool MayDoEverything() const { return m_mayDoEverything; }

    /// The rights to a table or view, as SQL calls them.
    std::vector<const char*> RightsTo(std::string_view name) const;

    /// Why a statement is refused that SQLite's own questions do not tell of; empty if it is not. It may put rows in
    /// place of others, which SQLite removes without asking whether that is allowed; or it is one that SQLite or the
    /// library below may come to read otherwise than it is read here, or more than one. The tables that it names are
    /// ready.
    std::string Refusal(std::string_view statement) const;

    /// Why the last statement of this thread was refused, in a whole sentence that holds the word "privileges"; empty
    /// if none was since the last call.
    static std::string TakeRefusal();

private:
    enum Right { Select, Insert, Update, Delete };
    struct Rights {
        bool allowed[4] = {};
    };

    void ReadRights();
    static int Authorize(void* self, int action, const char* first, const char* second, const char* database,
                         const char* trigger);
    bool MayUse(Right right, std::string_view name) const;
    int Check(Right right, const char* name) const;
    int Refuse(const std::string& what) const;

    sqlite3* m_engine;
    std::string m_user;
    Locate m_locate;
    bool m_mayDoEverything;
    std::map<std::string, Rights> m_databases; ///< by their names as the catalog writes them, as the tables are
    std::map<Place, Rights> m_tables;
    std::map<std::string, bool> m_byTable; ///< databases at the security level TABLE
};

} // namespace tarnwick::records
