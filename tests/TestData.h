#pragma once

#include "TestFiles.h"
#include "TestTypes.h"

#include <QTest>

/// The fixed files in tests/data.
namespace TestData {

inline QString path(const QString& name)
{
    return QStringLiteral(TEST_DATA "/") + name;
}

inline QByteArray content(const char* name)
{
    return TestFiles::contentOf(path(QLatin1String(name)));
}

/// Fails the current row, in whose file \p text stands for no \p what.
inline void refuse(const QString& text, const char* what)
{
    QTest::qFail('"' + text.toUtf8() + "\" is no " + what, __FILE__, __LINE__);
}

/// The value that a text stands for: a text, a number (of an enumerator, too), or "yes" or "no". Any other
/// word fails the row, so that nothing is tested with a 0 that nobody wrote.
template <typename Type>
Type valueOf(const QString& text)
{
    if constexpr (std::is_enum_v<Type>) {
        return Type(valueOf<int>(text));
    } else {
        QVariant value = text;
        bool isOne = TestTypes::convert(value, qMetaTypeId<Type>());
        if constexpr (std::is_same_v<Type, bool>) {
            value = text == QLatin1String("yes");
            isOne = value.toBool() || text == QLatin1String("no");
        }
        if (!isOne)
            refuse(text, value.typeName());
        return value.value<Type>();
    }
}

/// Gives a test its rows from a text file. A line is the row's name and a field for each of \p columns, with
/// "|" between them; missing fields are empty, more are refused, "#" starts a comment. \p Types are those of
/// the first columns, the others are texts.
template <typename... Types>
void addRows(const char* file, std::initializer_list<const char*> columns)
{
    const char* const* column = columns.begin();
    (QTest::addColumn<Types>(*column++), ...);
    while (column != columns.end())
        QTest::addColumn<QString>(*column++);
    const auto lines = QString::fromUtf8(content(file)).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
    if (lines.isEmpty())
        qFatal("%s is missing or empty", file);
    for (const QString& line : lines) {
        if (line.startsWith(QLatin1Char('#')))
            continue;
        QStringList fields = line.split(QLatin1Char('|'));
        if (fields.size() > int(columns.size()) + 1)
            qFatal("%s has more fields than columns: %s", file, qPrintable(line));
        const auto next = [&fields] { return fields.isEmpty() ? QString() : fields.takeFirst().trimmed(); };
        QTestData& row = QTest::newRow(qPrintable(next()));
        static_cast<void>((row << ... << valueOf<Types>(next())));
        for (std::size_t i = sizeof...(Types); i < columns.size(); ++i)
            row << next();
    }
}

/// The field of the current row in the column \p column.
template <typename Type = QString>
Type field(const char* column)
{
    return *static_cast<const Type*>(QTest::qData(column, qMetaTypeId<Type>()));
}

} // namespace TestData
