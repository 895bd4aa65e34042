// kuvo-mkstore OUT [--installed]: makes a new store file with the shipped schema;
// with --installed, table Kuvo is filled from the shipped draw history.
#include <QFileInfo>
#include <QString>
#include <cstdio>

#include "core/Store.h"

int main(int argc, char** argv) {
  QString out;
  bool installed = false;
  bool usage = false;
  for (int i = 1; i < argc; ++i) {
    const QString arg = QString::fromLocal8Bit(argv[i]);
    if (arg == QLatin1String("--installed"))
      installed = true;
    else if (out.isEmpty() && !arg.startsWith(QLatin1String("--")))
      out = arg;
    else
      usage = true;
  }
  if (usage || out.isEmpty()) {
    std::fprintf(stderr, "usage: kuvo-mkstore OUT [--installed]\n");
    return 2;
  }
  if (QFileInfo::exists(out)) {
    std::fprintf(stderr, "kuvo-mkstore: '%s' existe déjà, il n'est pas remplacé.\n",
                 out.toLocal8Bit().constData());
    return 1;
  }
  try {
    kuvo::CreateStore(out, kuvo::ShippedSchema(), installed ? kuvo::ShippedHistory() : QString());
  } catch (const kuvo::VbError& e) {
    std::fprintf(stderr, "kuvo-mkstore: %s\n", e.what());
    return 1;
  }
  return 0;
}
