#pragma once

#include "TestHome.h"

#include <QJsonArray>
#include <QJsonObject>
#include <QMap>
#include <QRegularExpression>

/// The page that describes answers in JSON, as tests hold the answers against it.
namespace JsonSchema {

/// A member as the page has it: `presets[].key`.
struct Member
{
    QString types;
    bool isOptional = false;
};

struct Section
{
    QString name;    ///< the words of a command
    QString example; ///< its arguments
    QMap<QString, Member> members;
};

inline void addRow(Section& section, const QStringList& cells)
{
    for (QString path : cells[1].split(","_q))
        section.members[path.remove("`"_q).trimmed()] = {cells[2], cells[2].contains("if any"_q)};
}

inline QList<Section> sectionsOf(const QString& page)
{
    QList<Section> sections;
    for (const QString& line : page.split("\n"_q)) {
        if (line.startsWith("## "_q))
            sections << Section{line.mid(3), {}, {}};
        else if (!sections.isEmpty() && line.startsWith("`globalsctl "_q))
            sections.last().example = line.mid(12).chopped(1);
        else if (!sections.isEmpty() && line.startsWith("| `"_q))
            addRow(sections.last(), line.split("|"_q));
    }
    return sections;
}

/// The types of all values below \p value, by their paths.
inline void collect(const QJsonValue& value, const QString& path, QMultiMap<QString, QString>& types)
{
    static const QMap<QJsonValue::Type, QString> NAMES = {{QJsonValue::Null, "null"_q},
                                                          {QJsonValue::Bool, "boolean"_q},
                                                          {QJsonValue::Double, "number"_q},
                                                          {QJsonValue::String, "string"_q}};
    const QJsonObject object = value.toObject();
    for (auto member = object.begin(); member != object.end(); ++member)
        collect(*member, path.isEmpty() ? member.key() : path + "."_q + member.key(), types);
    for (const QJsonValue element : value.toArray())
        collect(element, path + "[]"_q, types);
    if (NAMES.contains(value.type()))
        types.insert(path, NAMES[value.type()]);
}

/// What is different in \p answer from what \p section says; empty for nothing.
inline QString difference(const Section& section, const QJsonObject& answer)
{
    QMultiMap<QString, QString> types;
    collect(answer, {}, types);
    types.remove("schema"_q);
    QStringList found;
    for (auto type = types.begin(); type != types.end(); ++type) {
        const QString path = type.key().startsWith("groups."_q) ? "groups.*.*"_q : type.key();
        if (!section.members.value(path).types.contains(*type))
            found << path + " is a "_q + *type;
    }
    for (auto member = section.members.begin(); member != section.members.end(); ++member) {
        if (!member->isOptional && !types.contains(member.key()))
            found << member.key() + " is missing"_q;
    }
    return found.join("; "_q);
}

} // namespace JsonSchema
