#include "core/TextFiles.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include "core/Errors.h"

namespace kuvo {

namespace {

constexpr int kLastFileNumber = 511;
// Written text goes to the disk once it reaches this size, and at the close.
constexpr size_t kFlushSize = 64 * 1024;

[[noreturn]] void BadFileNumber() { Raise(Err::BadFileName); }

[[noreturn]] void PathAccessError() { Raise(Err::PathAccess); }

}  // namespace

TextFiles::TextFiles() = default;

TextFiles::~TextFiles() {
  // The end of the program closes what is still open, as the platform's runtime does.
  for (auto& [number, file] : files_) {
    try {
      Flush(file);
    } catch (const VbError&) {
    }
  }
}

QString TextFiles::Key(const QString& path) {
  const QString clean = QDir::cleanPath(QFileInfo(path).absoluteFilePath());
  if (QFileInfo::exists(clean)) return clean;
  // File names are the same file whatever their letter case, as on the
  // platform's file system: "KUVO.csv" names an existing "KUVO.CSV".
  const QFileInfo info(clean);
  const QDir folder = info.absoluteDir();
  const QString name = info.fileName();
  for (const QString& entry :
       folder.entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name))
    if (entry.compare(name, Qt::CaseInsensitive) == 0) return folder.filePath(entry);
  return clean;
}

bool TextFiles::IsOpen(const QString& path) const {
  const QString key = Key(path);
  for (const auto& [number, file] : files_)
    if (file.path == key) return true;
  return false;
}

int TextFiles::FreeFile() const {
  for (int n = 1; n <= kLastFileNumber; ++n)
    if (!files_.count(n)) return n;
  Raise(Err::TooManyFiles);
}

void TextFiles::Open(const QString& path, Mode mode, int number) {
  if (number < 1 || number > kLastFileNumber) BadFileNumber();
  if (files_.count(number)) Raise(Err::FileAlreadyOpen);
  OpenFile file;
  file.mode = mode;
  file.path = Key(path);
  // A file may be open for reading under several numbers; one being written
  // is open under its number alone.
  for (const auto& [n, other] : files_)
    if (other.path == file.path && (mode == Mode::Output || other.mode == Mode::Output))
      Raise(Err::FileAlreadyOpen);
  QFile disk(file.path);
  if (mode == Mode::Input) {
    if (!QFileInfo(file.path).isFile()) Raise(Err::FileNotFound);
    if (!disk.open(QIODevice::ReadOnly)) PathAccessError();
    file.contents = disk.readAll();
  } else {
    if (!disk.open(QIODevice::WriteOnly | QIODevice::Truncate)) PathAccessError();
  }
  files_.emplace(number, std::move(file));
}

void TextFiles::Flush(OpenFile& file) {
  if (file.mode != Mode::Output || file.pending.empty()) return;
  QFile disk(file.path);
  if (!disk.open(QIODevice::WriteOnly | QIODevice::Append)) PathAccessError();
  const qint64 size = static_cast<qint64>(file.pending.size());
  if (disk.write(file.pending.data(), size) != size) PathAccessError();
  file.pending.clear();
}

void TextFiles::Close(int number) {
  auto it = files_.find(number);
  if (it == files_.end()) BadFileNumber();
  OpenFile file = std::move(it->second);
  files_.erase(it);
  Flush(file);
}

TextFiles::OpenFile& TextFiles::Get(int number, Mode mode) {
  auto it = files_.find(number);
  if (it == files_.end()) BadFileNumber();
  if (it->second.mode != mode) Raise(Err::BadFileMode);
  return it->second;
}

const TextFiles::OpenFile& TextFiles::Get(int number) const {
  auto it = files_.find(number);
  if (it == files_.end()) BadFileNumber();
  return it->second;
}

bool TextFiles::Eof(int number) const {
  const OpenFile& file = Get(number);
  // A file open for writing stands at its end.
  if (file.mode != Mode::Input) return true;
  return file.position >= file.contents.size();
}

char TextFiles::InputChar(int number) {
  OpenFile& file = Get(number, Mode::Input);
  if (file.position >= file.contents.size()) Raise(Err::InputPastEnd);
  return file.contents.at(file.position++);
}

QByteArray TextFiles::Input(int count, int number) {
  OpenFile& file = Get(number, Mode::Input);
  if (count < 0) Raise(Err::InvalidCall);
  if (file.position + count > file.contents.size()) Raise(Err::InputPastEnd);
  QByteArray out = file.contents.mid(file.position, count);
  file.position += count;
  return out;
}

QByteArray TextFiles::LineInput(int number) {
  OpenFile& file = Get(number, Mode::Input);
  const QByteArray& c = file.contents;
  if (file.position >= c.size()) Raise(Err::InputPastEnd);
  qsizetype end = c.indexOf('\r', file.position);
  if (end < 0) end = c.size();
  QByteArray line = c.mid(file.position, end - file.position);
  file.position = end;
  if (file.position < c.size()) {
    ++file.position;  // the carriage return
    if (file.position < c.size() && c.at(file.position) == '\n') ++file.position;
  }
  return line;
}

void TextFiles::PrintLine(int number, const char* text, size_t size) {
  OpenFile& file = Get(number, Mode::Output);
  file.pending.append(text, size);
  file.pending.append("\r\n", 2);
  if (file.pending.size() >= kFlushSize) Flush(file);
}

void TextFiles::PrintLine(int number, const QByteArray& text) {
  PrintLine(number, text.constData(), static_cast<size_t>(text.size()));
}

void TextFiles::Kill(const QString& path) {
  const QString key = Key(path);
  if (IsOpen(key)) Raise(Err::FileAlreadyOpen);
  if (!QFileInfo(key).isFile()) Raise(Err::FileNotFound);
  if (!QFile::remove(key)) PathAccessError();
}

}  // namespace kuvo
