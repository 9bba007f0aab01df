#pragma once

#include "Command.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace oVELDRA::data {

/// What the program was started with.
struct CommandLine
{
    enum class Wish : quint8 { Run, Help, Version, Refuse };

    Wish wish = Wish::Refuse;
    const Command* command = nullptr; ///< the command named, if it is one; points into the list given to parse()
    Arguments arguments;              ///< of Run
    bool json = false;                ///< known for every wish, as refusals are told in JSON, too
    QString message;                  ///< of Refuse: what is wrong, one sentence

    /// Reads the arguments behind the program's name. Options stand anywhere behind the command; behind `--` everything
    /// is an operand. An option's value stands behind a blank or `=`; one that begins with `--` only behind `=`. Asking
    /// for help wins over any mistake.
    [[nodiscard]] static CommandLine parse(const QStringList& arguments, const std::vector<Command>& commands);
};

} // namespace oVELDRA::data
