#include "commands/Command.h"
#include "support/Archive.h"
#include "support/Failure.h"
#include "support/Output.h"

#include "globals/DataBlock.h"

#include <QCommandLineParser>
#include <QJsonArray>
#include <QJsonObject>

namespace globalsctl {

using namespace TEKLUVA;

namespace {

struct Entry
{
    QString name;
    quint64 stored;   ///< bytes
    quint64 real;     ///< bytes without the header and the padding of a protected block
    bool isProtected; ///< as its form says
};

/// All entries, with the sums of their sizes.
struct Listing
{
    std::vector<Entry> entries;
    quint64 stored = 0;
    quint64 real = 0;
};

/// The bytes of header and padding in \p entry; 0 for one that has not the form of a protected block.
quint64 extraOf(const ArchivedFile& entry)
{
    // Most entries that are none show it in their size already.
    if (entry.size < DataBlock::HEADER_SIZE || (entry.size - DataBlock::HEADER_SIZE) % DataBlock::BLOCK_SIZE)
        return 0;
    const QByteArray start = entry.beginning(DataBlock::PAD_COUNT_SIZE);
    const quint64 pads = start.isEmpty() ? DataBlock::BLOCK_SIZE : static_cast<uchar>(start[0]);
    const quint64 extra = DataBlock::HEADER_SIZE + pads;
    return pads <= DataBlock::MAX_PAD_COUNT && extra <= entry.size ? extra : 0;
}

Listing listingOf(const Archive& archive)
{
    Listing listing;
    static_cast<void>(archive.reader().visitArchivedFiles([&listing](const ArchivedFile& entry) {
        const quint64 extra = extraOf(entry);
        listing.entries.push_back(
            {QString::fromStdString(entry.name), entry.size, entry.size - extra, extra > 0});
        listing.stored += entry.size;
        listing.real += entry.size - extra;
        return true;
    }));
    return listing;
}

void printListing(const Listing& listing)
{
    QList<QStringList> rows = {{QStringLiteral("STORED"), QStringLiteral("REAL"), QStringLiteral("PROTECTED"),
                                QStringLiteral("NAME")}};
    for (const Entry& entry : listing.entries) {
        rows << QStringList{QString::number(entry.stored), QString::number(entry.real),
                            entry.isProtected ? QStringLiteral("yes") : QStringLiteral("no"),
                            printable(entry.name)};
    }
    const std::size_t count = listing.entries.size();
    rows << QStringList{QString::number(listing.stored), QString::number(listing.real), QString(),
                        count == 1 ? QStringLiteral("1 entry") : QStringLiteral("%1 entries").arg(count)};
    printTable(rows);
}

QJsonObject objectOf(const Archive& archive, const Listing& listing)
{
    QJsonArray entries;
    for (const Entry& entry : listing.entries) {
        entries << QJsonObject{{QStringLiteral("name"), entry.name},
                               {QStringLiteral("stored"), static_cast<qint64>(entry.stored)},
                               {QStringLiteral("real"), static_cast<qint64>(entry.real)},
                               {QStringLiteral("protected"), entry.isProtected}};
    }
    return {{QStringLiteral("archive"), archive.path()},
            {QStringLiteral("whole"), archive.isWhole()},
            {QStringLiteral("entries"), entries},
            {QStringLiteral("stored"), static_cast<qint64>(listing.stored)},
            {QStringLiteral("real"), static_cast<qint64>(listing.real)}};
}

void printNames(const Archive& archive)
{
    for (const Archive::Entry& entry : archive.entries())
        printResult(printable(QString::fromStdString(entry.name)));
}

} // namespace

int listData(const QCommandLineParser& line)
{
    const bool inJson = line.isSet(QStringLiteral("json"));
    const bool onlyNames = line.isSet(QStringLiteral("names"));
    if (inJson && onlyNames)
        throw UsageError(QStringLiteral("--names and --json cannot both be had"));
    const Archive archive(line.positionalArguments().first());
    if (onlyNames)
        printNames(archive);
    else if (inJson)
        printAnswer(objectOf(archive, listingOf(archive)));
    else
        printListing(listingOf(archive));
    return archive.reportDamage();
}

} // namespace globalsctl
