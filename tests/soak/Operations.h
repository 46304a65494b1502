#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

/// The operations of the library that work on files, each with what must hold after it, whatever fails.
namespace Operations {

struct Operation
{
    const char* name = nullptr;
    bool mayThrow = false; ///< without memory for its objects
    bool (*succeeds)() = nullptr;
    /// Whether what it leaves is whole. An operation that \p claims success has made all of it new.
    bool (*holds)(bool claims) = [](bool /*claims*/) { return true; };
};

const std::vector<Operation>& all();

/// Puts the files that they work on back. False when that fails.
bool prepareFiles();

/// Makes the objects that the next operations work with, which else make their own. Qt does not survive it
/// when there is no memory to make a QObject.
void prepareObjects();

extern const QByteArray OLD; ///< of files and entries that lie there before
extern const QByteArray NEW; ///< what is written over them
extern const QString PASSWORD;

} // namespace Operations
