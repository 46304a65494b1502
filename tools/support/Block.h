#pragma once

#include <QByteArray>
#include <QString>

/// Protected blocks, and what is taken for one by mistake.
namespace globalsctl {

/// Whether \p bytes begin like an archive, which may be cut.
bool beginsLikeArchive(const QByteArray& bytes);

/// What the zero bytes that fill up a block's content say of the password.
enum class PasswordProof {
    Right, ///< by chance once in 256 blocks that have one zero byte, and more rarely with more of them
    None,  ///< there are no such bytes
    Wrong, ///< or the block is damaged
};

/// What \p block, which must have the form of one, says of \p password.
PasswordProof proofOf(const QByteArray& block, const QString& password);

} // namespace globalsctl
