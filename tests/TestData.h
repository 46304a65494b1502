#pragma once

#include <QFile>
#include <QTest>

/// The fixed files in tests/data.
namespace TestData {

inline QString path(const QString& name)
{
    return QStringLiteral(TEST_DATA "/") + name;
}

inline QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

inline void write(const QString& path, const QByteArray& bytes)
{
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(bytes), qint64(bytes.size()));
}

inline QByteArray content(const char* name)
{
    return contentOf(path(QLatin1String(name)));
}

/// Gives a test its data from a text file: a line is the row's name and a field for each of \p columns, with
/// "|" between them. Missing fields are empty, more are refused, "#" starts a comment.
inline void addRows(const char* file, std::initializer_list<const char*> columns)
{
    for (const char* column : columns)
        QTest::addColumn<QString>(column);
    const auto lines = QString::fromUtf8(content(file)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('#')))
            continue;
        const QStringList fields = line.split(QLatin1Char('|'));
        if (fields.count() > int(columns.size()) + 1)
            qFatal("%s has more fields than columns: %s", file, qPrintable(line));
        QTestData& row = QTest::newRow(qPrintable(fields[0].trimmed()));
        for (int i = 1; i <= int(columns.size()); ++i)
            row << fields.value(i).trimmed();
    }
}

/// The field of the current row in the column \p column.
inline QString field(const char* column)
{
    return *static_cast<const QString*>(QTest::qData(column, QMetaType::QString));
}

} // namespace TestData
