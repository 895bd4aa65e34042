#pragma once

// One input of each fuzz target, shared by the targets (which abort on a
// fault) and by the unit test that replays the committed corpora.

#include <QByteArray>
#include <QString>

#include "core/OperatorFiles.h"

namespace kuvo::fuzz {

// The written file is read again as the import's layout: it must give the same
// draws, and write itself again byte for byte. Returns the fault, or nullptr.
inline const char* ReadsBack(const convert::History& history) {
  const QByteArray written = history.Render();
  convert::History again;
  try {
    again.Add(convert::ReadHistory(QStringLiteral("Kuvo.csv"), written));
  } catch (const convert::ConvertError&) {
    return "the written file is refused";
  }
  if (again.Size() != history.Size()) return "the written file holds another number of draws";
  if (again.Render() != written) return "the written file does not write itself again";
  return nullptr;
}

// One history file, of any layout, told apart from a file of the import's
// layout as the import window does, then read and written in the import's
// layout as the converter does. A refusal is a normal end.
inline const char* ReadOneFile(const QByteArray& bytes) {
  convert::IsOperatorFile(bytes, static_cast<int>(convert::KuvoColumns().size()));
  try {
    convert::History history;
    history.Add(convert::ReadHistory(QStringLiteral("historique.csv"), bytes));
    return ReadsBack(history);
  } catch (const convert::ConvertError&) {
    return nullptr;
  }
}

// Two history files merged as the converter merges them: the first file, a NUL
// byte, then the second. A refusal is a normal end.
inline const char* MergeTwoFiles(const QByteArray& bytes) {
  const qsizetype cut = bytes.indexOf('\0');
  if (cut < 0) return nullptr;
  try {
    convert::History history;
    history.Add(convert::ReadHistory(QStringLiteral("ancien.csv"), bytes.first(cut)));
    history.Add(convert::ReadHistory(QStringLiteral("nouveau.csv"), bytes.sliced(cut + 1)));
    return ReadsBack(history);
  } catch (const convert::ConvertError&) {
    return nullptr;
  }
}

}  // namespace kuvo::fuzz
