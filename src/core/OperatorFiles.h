#pragma once

// The operator's history files, in any of the layouts it has published since
// October 2008: the reader and its checks, shared by the import window and the
// converter. QtCore only; every function works on bytes in memory.

#include <QByteArray>
#include <QDate>
#include <QString>
#include <QStringList>
#include <array>
#include <exception>
#include <map>
#include <vector>

namespace kuvo::convert {

// The columns of table Kuvo in their order: the header of the written file.
const QStringList& KuvoColumns();

// A file or a draw that cannot be taken; the text says in French where and why.
class ConvertError : public std::exception {
 public:
  explicit ConvertError(QString text) : text_(std::move(text)), utf8_(text_.toUtf8()) {}
  const QString& Text() const { return text_; }
  const char* what() const noexcept override { return utf8_.constData(); }

 private:
  QString text_;
  QByteArray utf8_;
};

// One draw read from a file, with the fields to write for it.
struct Draw {
  QDate date;
  std::array<int, 5> numbers{};  // in draw order
  int chance = 0;
  QByteArray text;  // its line of the written file, UTF-8, without the line feed
  QString file;     // where it was read, for the messages
  int line = 0;
};

// Reads every draw of one history file. `name` is the file as the user named
// it; `bytes` its contents. A bad file or line raises ConvertError.
std::vector<Draw> ReadHistory(const QString& name, const QByteArray& bytes);

// The draws of several files, one per date. A date met again with the same
// numbers is the same draw and is kept once, as first met; with other numbers
// it raises ConvertError naming both places.
class History {
 public:
  void Add(std::vector<Draw> draws);
  bool Empty() const { return byDate_.empty(); }
  size_t Size() const { return byDate_.size(); }
  QDate First() const;
  QDate Last() const;
  const std::map<QDate, Draw>& Draws() const { return byDate_; }
  // The file the import reads: header, then one line per draw, newest first.
  QByteArray Render() const;

 private:
  std::map<QDate, Draw> byDate_;
};

// Whether `bytes` is one of the operator's own files rather than a file of the
// import's layout: its header names the operator's columns (those of the
// current game, or of the older game, which the reader refuses), and it names
// more than `kuvoColumns` columns or dates its first draw DD/MM/YYYY.
bool IsOperatorFile(const QByteArray& bytes, int kuvoColumns);

}  // namespace kuvo::convert
