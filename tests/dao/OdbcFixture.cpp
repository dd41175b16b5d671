#include "OdbcFixture.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include <iostream>

#if defined(__SANITIZE_ADDRESS__)
#include <sanitizer/lsan_interface.h>
DriverManagersOwnLeak::DriverManagersOwnLeak()
{
    __lsan_disable();
}
DriverManagersOwnLeak::~DriverManagersOwnLeak()
{
    __lsan_enable();
}
#else
DriverManagersOwnLeak::DriverManagersOwnLeak() = default;
DriverManagersOwnLeak::~DriverManagersOwnLeak() = default;
#endif

QString OdbcFixture::folder()
{
    static const QTemporaryDir directory;
    return directory.path();
}

void OdbcFixture::write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly)) << path.toStdString();
    ASSERT_EQ(file.write(bytes), bytes.size());
}

QByteArray OdbcFixture::read(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void OdbcFixture::SetUp()
{
    const QStringList entries = QDir(folder()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot);
    for (const QString& entry : entries) {
        const QString path = folder() + u'/' + entry;
        if (!QFile::remove(path))
            QDir(path).removeRecursively();
    }
    qputenv("ODBCSYSINI", folder().toUtf8());
    qputenv("ODBCINI", userIni().toUtf8());
    write(folder() + QStringLiteral("/odbcinst.ini"), "[Scripted]\nDriver=" SCRIPTED_DRIVER "\n"
                                                      "[SQLite]\nDriver=" SQLITE_DRIVER "\n"
#ifdef TARNWICK_DRIVER
                                                      "[Tarnwick ODBC]\nDriver=" TARNWICK_DRIVER "\n"
#else
                                                      "[Tarnwick ODBC]\nDriver=" SQLITE_DRIVER "\n"
#endif
    );
    write(systemIni(), "");
    write(userIni(), "[scripted]\nDriver=Scripted\n");
    workspace = dao::DBEngine::CreateWorkspace(QStringLiteral("Tests"), {}, {}, 1);
}

void OdbcFixture::TearDown()
{
    if (HasFailure() && !chain().isEmpty())
        std::cerr << "error chain: " << testing::PrintToString(chain()) << '\n';
    dao::DBEngine::setObserver(nullptr);
    dao::DBEngine::Errors().Clear();
}

std::unique_ptr<dao::Database> OdbcFixture::openScripted(const QString& attributes)
{
    return open(QStringLiteral("ODBC;DSN=scripted;") + attributes);
}

std::unique_ptr<dao::Database> OdbcFixture::open(const QString& connect)
{
    return workspace->OpenDatabase({}, connect);
}

QStringList chain()
{
    QStringList texts;
    const dao::Errors& errors = dao::DBEngine::Errors();
    for (int index = 0; index < errors.Count(); ++index)
        texts << QStringLiteral("%1 %2").arg(errors.Item(index).Number).arg(errors.Item(index).Description);
    return texts;
}

QStringList columnTexts(dao::Recordset& recordset, const QString& column)
{
    QStringList texts;
    for (; !recordset.Eof(); recordset.MoveNext())
        texts << recordset.Fields().Item(column).Value().Text();
    return texts;
}

StepAnswer AnsweringTrap::failed(const RuntimeError& error)
{
    failures << QStringLiteral("%1: %2").arg(static_cast<int>(error.number())).arg(chain().join(QStringLiteral(" / ")));
    if (m_answers.empty()) {
        ADD_FAILURE() << "asked once more: " << failures.last().toStdString();
        leave();
    }
    const StepAnswer answer = m_answers.front();
    m_answers.pop_front();
    return answer;
}
