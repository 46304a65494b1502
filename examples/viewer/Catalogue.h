#pragma once

#include <QString>
#include <QVector>

/// A piece of furniture, measured in cm.
struct Article
{
    QString group;
    QString name;
    double width = 0, depth = 0, height = 0;
};

/// The articles whose names contain \p text in any case, from the protected archive \p path: an entry per
/// group, with a line "name;width;depth;height" per article below the line "catalogue". Shows the reading as
/// a step of the state handler's process, and returns what it has when the user asks for an abort. Throws
/// std::runtime_error for an archive that cannot be read. For any thread.
QVector<Article> findArticles(const QString& path, const QString& password, const QString& text);
