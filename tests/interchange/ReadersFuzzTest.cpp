#include "ReadersFuzz.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace
{

std::vector<QByteArray> seeds()
{
    std::vector<QByteArray> all;
    const QDir folder(FUZZ_SEEDS);
    for (const QString& name : folder.entryList({"*.csv"})) {
        QFile file(folder.filePath(name));
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        all.push_back(file.readAll());
    }
    return all;
}

/// Changes a few bytes, mostly to those that the readers look at, drops a piece, or brings one of another seed.
QByteArray mutated(QByteArray bytes, const std::vector<QByteArray>& all, QRandomGenerator& random)
{
    static const QByteArray favourites("\",\n'; \0\xFF\xC3\t019-.e", 16);
    for (int changes = 1 + random.bounded(6); changes > 0 && !bytes.isEmpty(); --changes) {
        const auto at = random.bounded(static_cast<int>(bytes.size()));
        const auto length = random.bounded(12);
        const QByteArray& other = all[static_cast<std::size_t>(random.bounded(static_cast<int>(all.size())))];
        switch (random.bounded(4)) {
        case 0:
            bytes[at] = favourites[random.bounded(static_cast<int>(favourites.size()))];
            break;
        case 1:
            bytes.insert(at, favourites[random.bounded(static_cast<int>(favourites.size()))]);
            break;
        case 2:
            bytes.remove(at, length);
            break;
        default:
            bytes.insert(at, other.mid(random.bounded(static_cast<int>(other.size())), length));
        }
    }
    return bytes;
}

void sweep(void (*reader)(const std::uint8_t*, std::size_t))
{
    const std::vector<QByteArray> all = seeds();
    ASSERT_GE(all.size(), 3U);
    const auto feed = [reader](const QByteArray& bytes) {
        reader(reinterpret_cast<const std::uint8_t*>(bytes.constData()), static_cast<std::size_t>(bytes.size()));
    };
    for (const QByteArray& seed : all)
        feed(seed);
    QRandomGenerator random(4711);
    for (int round = 0; round < 4000; ++round)
        feed(mutated(all[static_cast<std::size_t>(round) % all.size()], all, random));
}

} // namespace

TEST(ReadersFuzz, TheValidationKeepsItsPromisesOnAnyBytes)
{
    sweep(fuzzValidator);
}

TEST(ReadersFuzz, TheScannerKeepsItsPromisesOnAnyBytes)
{
    sweep(fuzzScanner);
}
