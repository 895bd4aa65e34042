// kuvo-mkstore OUT [--installed]: creates a store from the shipped schema, with
// the demonstration history in table Kuvo when --installed is given.
#include <QCoreApplication>
#include <QFile>
#include <cstdio>

#include "core/Errors.h"
#include "core/Store.h"

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  const QStringList args = app.arguments();
  if (args.size() < 2 || args.size() > 3 ||
      (args.size() == 3 && args[2] != QLatin1String("--installed"))) {
    std::fprintf(stderr, "usage: kuvo-mkstore OUT [--installed]\n");
    return 2;
  }
  if (QFile::exists(args[1])) {
    std::fprintf(stderr, "kuvo-mkstore: %s exists; it is never overwritten\n", qPrintable(args[1]));
    return 1;
  }
  try {
    kuvo::CreateStore(args[1], kuvo::ShippedSchema(),
                      args.size() == 3 ? kuvo::ShippedHistory() : QString());
  } catch (const kuvo::VbError& e) {
    std::fprintf(stderr, "kuvo-mkstore: %s\n", e.what());
    return 1;
  }
  return 0;
}
