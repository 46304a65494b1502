#pragma once

#include "TestFiles.h"
#include "TestHome.h"
#include "TestTypes.h"

#include <algorithm>

/// The fixed files in tests/data.
namespace TestData {

inline QString path(const QString& name)
{
    return TEST_DATA "/"_q + name;
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
            value = text == "yes"_q;
            isOne = value.toBool() || text == "no"_q;
        }
        if (!isOne)
            refuse(text, value.typeName());
        return value.value<Type>();
    }
}

inline QStringList fieldsOf(const QByteArray& line)
{
    QStringList fields;
    for (const QString& field : QString::fromUtf8(line).split("|"_q))
        fields << field.trimmed();
    return fields;
}

/// Gives a test its rows from a text file: a table with "|" between its fields, the names of the columns in
/// its first line and those of the rows in its first column. Missing fields are empty, more are refused, "#"
/// starts a comment.
inline void addRows(const char* file)
{
    QTest::addColumn<QVariantMap>("fields");
    QByteArrayList lines = content(file).split('\n');
    const auto isNone = [](const QByteArray& line) { return line.isEmpty() || line.startsWith('#'); };
    lines.erase(std::remove_if(lines.begin(), lines.end(), isNone), lines.end());
    if (lines.isEmpty())
        qFatal("%s is missing or empty", file);
    const QStringList columns = fieldsOf(lines.takeFirst());
    for (const QByteArray& line : lines) {
        const QStringList fields = fieldsOf(line);
        if (fields.size() > columns.size())
            qFatal("%s has more fields than columns: %s", file, line.constData());
        QVariantMap row;
        for (int i = 1; i < columns.size(); ++i)
            row[columns[i]] = fields.value(i);
        QTest::newRow(qPrintable(fields[0])) << row;
    }
}

/// What the field of the current row in the column \p column stands for.
template <typename Type = QString>
Type field(const char* column)
{
    const auto& fields = *static_cast<const QVariantMap*>(QTest::qData("fields", QMetaType::QVariantMap));
    const QString name = QLatin1String(column);
    if (!fields.contains(name))
        refuse(name, "column");
    return valueOf<Type>(fields[name].toString());
}

} // namespace TestData
