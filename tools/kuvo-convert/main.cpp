// kuvo-convert [-o OUTPUT] FILE...: merges the operator's history files, in any
// of their layouts since October 2008, into the file the import window reads
// (Kuvo.csv in the current folder by default).
#include <QCoreApplication>
#include <QDir>
#include <cstdio>

#include "Convert.h"

namespace {

void Print(std::FILE* stream, const QString& text) {
  const QByteArray bytes = text.toUtf8();
  std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

}  // namespace

int main(int argc, char** argv) {
  QCoreApplication app(argc, argv);
  QString out, err;
  const int status = kuvo::convert::Run(app.arguments().mid(1), QDir::currentPath(), out, err);
  Print(stdout, out);
  Print(stderr, err);
  return status;
}
