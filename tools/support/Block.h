#pragma once

#include <QByteArray>

/// Protected blocks, and what is taken for one by mistake.
namespace globalsctl {

/// Whether \p bytes begin like an archive, which may be cut.
bool beginsLikeArchive(const QByteArray& bytes);

} // namespace globalsctl
