#pragma once

#include <QString>

/// What the completions for shells are made of, from the tool's table of commands. The words for arguments
/// and values in help texts say what may stand there: UNIT is a unit, FILE a file.
namespace Completion {

/// For bash and zsh, a line for each command: 'words|arguments|options|options with a value and its word'.
QString commandRows();
QString commonOptionWords();
/// For bash and zsh, the cases of the words whose values are known: UNIT) offered='mm cm' ;;
QString valueCases();

/// For fish, a line for each word, option and argument of each command.
QString fishLines();

} // namespace Completion
