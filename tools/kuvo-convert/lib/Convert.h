#pragma once

// Turns the operator's history files, in any of the layouts it has published
// since October 2008, into the one file the import window reads. The reader and
// its checks are those of the import window (core/OperatorFiles.h).

#include <QString>
#include <QStringList>

#include "core/OperatorFiles.h"

namespace kuvo::convert {

// The command: `args` without the program's name, relative paths taken from
// `folder`. The summary goes to `out`, a message to `err`. Returns the exit
// status: 0 done, 1 refused (nothing written), 2 bad command line.
int Run(const QStringList& args, const QString& folder, QString& out, QString& err);

}  // namespace kuvo::convert
