#pragma once

#include <QByteArray>
#include <QString>
#include <map>
#include <string>

namespace kuvo {

// The sequential text files of the run, by file number, as the platform has them.
// A character is one byte: the bytes of a file go through a read and a write
// unchanged, whatever their encoding; decoding is the reader's business.
//  - "read a line" takes the characters up to a carriage return; a line feed
//    right behind that carriage return goes with it, a lone line feed is an
//    ordinary character;
//  - "write a line" ends the text with a carriage return and a line feed.
// Each open takes a file number, which stays taken until that number is closed:
// nothing closes a file on an error. Opening under a number in use raises error
// 55 "Fichier déjà ouvert", and so does opening a file that is being written,
// or opening for writing a file open under another number; a file may be open
// for reading under several numbers.
// What is written is kept in memory and reaches the disk when the file is
// closed (or its buffer grows large), and at the end of the program.
class TextFiles {
 public:
  enum class Mode { Input, Output };

  TextFiles();
  ~TextFiles();
  TextFiles(const TextFiles&) = delete;
  TextFiles& operator=(const TextFiles&) = delete;

  // The lowest file number not in use (FreeFile).
  int FreeFile() const;
  // Open path For Input / For Output As #number. Input reads the whole file at
  // once (a missing file raises 53); Output creates or empties the file at once.
  // A number in use raises 55; so does a path open already, unless both this
  // open and the earlier ones are for input.
  void Open(const QString& path, Mode mode, int number);
  // Close #number; a number not in use raises 52.
  void Close(int number);
  // True when a file opened for input has been read to its end.
  bool Eof(int number) const;
  // Input(1, #number): the next character; past the end raises 62.
  char InputChar(int number);
  // Input(count, #number): the next `count` characters; past the end raises 62.
  QByteArray Input(int count, int number);
  // Line Input #number: the next line without its ending; at the end raises 62.
  QByteArray LineInput(int number);
  // Print #number, text: the text and a carriage return and line feed.
  void PrintLine(int number, const QByteArray& text);
  void PrintLine(int number, const char* text, size_t size);
  // Kill path: deletes a file; a missing file raises 53, an open one 55.
  void Kill(const QString& path);

  // Whether a file number or a path is in use, for observers and tests.
  bool IsOpen(int number) const { return files_.count(number) != 0; }
  bool IsOpen(const QString& path) const;

 private:
  struct OpenFile {
    Mode mode;
    QString path;            // absolute and clean
    QByteArray contents;     // input: the whole file
    qsizetype position = 0;  // input: the next character
    std::string pending;     // output: written, not yet on disk
  };
  OpenFile& Get(int number, Mode mode);
  const OpenFile& Get(int number) const;
  static void Flush(OpenFile& file);
  static QString Key(const QString& path);

  std::map<int, OpenFile> files_;
};

}  // namespace kuvo
