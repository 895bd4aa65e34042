#include <gtest/gtest.h>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>

#include "core/Errors.h"
#include "core/TextFiles.h"

namespace kuvo {
namespace {

using Mode = TextFiles::Mode;

class TextFilesTest : public ::testing::Test {
 protected:
  QString Path(const char* name) const { return dir.filePath(QLatin1String(name)); }
  void Put(const char* name, const QByteArray& bytes) {
    QFile f(Path(name));
    ASSERT_TRUE(f.open(QIODevice::WriteOnly | QIODevice::Truncate));
    f.write(bytes);
  }
  QByteArray Get(const char* name) {
    QFile f(Path(name));
    if (!f.open(QIODevice::ReadOnly)) return "<none>";
    return f.readAll();
  }
  // The number of the error `action` raises, 0 for none.
  template <class F>
  static int ErrorOf(F action) {
    try {
      action();
    } catch (const VbError& e) {
      return e.Number();
    }
    return 0;
  }

  QTemporaryDir dir;
  TextFiles files;
};

TEST_F(TextFilesTest, LineStopsAtCarriageReturnAndTakesTheLineFeedBehindIt) {
  Put("a.txt", "one\rtwo\r\nthree\nstill three\r\n");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(files.LineInput(1), "one");
  EXPECT_EQ(files.LineInput(1), "two");
  EXPECT_FALSE(files.Eof(1));
  EXPECT_EQ(files.LineInput(1), "three\nstill three");
  EXPECT_TRUE(files.Eof(1));
  EXPECT_EQ(ErrorOf([&] { files.LineInput(1); }), Err::InputPastEnd);
}

TEST_F(TextFilesTest, LineWithoutEndingRunsToTheEndOfTheFile) {
  Put("a.txt", "header\nline");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(files.LineInput(1), "header\nline");
  EXPECT_TRUE(files.Eof(1));
}

TEST_F(TextFilesTest, EmptyLinesBetweenCarriageReturns) {
  Put("a.txt", "\r\r\n\r");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(files.LineInput(1), "");
  EXPECT_EQ(files.LineInput(1), "");
  EXPECT_EQ(files.LineInput(1), "");
  EXPECT_TRUE(files.Eof(1));
}

TEST_F(TextFilesTest, CharactersOneByOneToTheEnd) {
  Put("a.txt", "ab\n");
  files.Open(Path("a.txt"), Mode::Input, 3);
  EXPECT_EQ(files.InputChar(3), 'a');
  EXPECT_EQ(files.InputChar(3), 'b');
  EXPECT_FALSE(files.Eof(3));
  EXPECT_EQ(files.InputChar(3), '\n');
  EXPECT_TRUE(files.Eof(3));
  EXPECT_EQ(ErrorOf([&] { files.InputChar(3); }), Err::InputPastEnd);
}

TEST_F(TextFilesTest, InputOfSeveralCharacters) {
  Put("a.txt", "abcdef");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(files.Input(1, 1), "a");
  EXPECT_EQ(files.Input(3, 1), "bcd");
  EXPECT_EQ(ErrorOf([&] { files.Input(3, 1); }), Err::InputPastEnd);
  EXPECT_EQ(files.Input(2, 1), "ef");
}

TEST_F(TextFilesTest, EmptyFileIsAtItsEndAtOnce) {
  Put("a.txt", "");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_TRUE(files.Eof(1));
  EXPECT_EQ(ErrorOf([&] { files.LineInput(1); }), Err::InputPastEnd);
}

TEST_F(TextFilesTest, WrittenLinesEndWithCarriageReturnAndLineFeed) {
  files.Open(Path("out.txt"), Mode::Output, 2);
  files.PrintLine(2, QByteArray("first"));
  files.PrintLine(2, QByteArray());
  files.PrintLine(2, QByteArray("last"));
  files.Close(2);
  EXPECT_EQ(Get("out.txt"), "first\r\n\r\nlast\r\n");
}

TEST_F(TextFilesTest, OutputEmptiesTheFileAtOnceAndWritesAtTheClose) {
  Put("out.txt", "old contents");
  files.Open(Path("out.txt"), Mode::Output, 1);
  EXPECT_EQ(Get("out.txt"), "");
  files.PrintLine(1, QByteArray("new"));
  EXPECT_EQ(Get("out.txt"), "");
  files.Close(1);
  EXPECT_EQ(Get("out.txt"), "new\r\n");
}

TEST_F(TextFilesTest, LargeOutputReachesTheDiskBeforeTheClose) {
  files.Open(Path("out.txt"), Mode::Output, 1);
  const QByteArray line(1000, 'x');
  for (int i = 0; i < 100; ++i) files.PrintLine(1, line);
  EXPECT_GE(Get("out.txt").size(), 64 * 1024);
  files.Close(1);
  EXPECT_EQ(Get("out.txt").size(), 100 * 1002);
}

TEST_F(TextFilesTest, BytesGoThroughUnchanged) {
  // UTF-8 characters and bytes that are no UTF-8 at all.
  const QByteArray text = QByteArray("caf\xC3\xA9;\xE2\x82\xAC;") + QByteArray("\xFF\xE9\x00z", 4);
  Put("in.txt", text + "\r\n");
  files.Open(Path("in.txt"), Mode::Input, 1);
  files.Open(Path("out.txt"), Mode::Output, 2);
  QByteArray copy;
  while (!files.Eof(1)) copy += files.InputChar(1);
  files.PrintLine(2, copy);
  files.Close(1);
  files.Close(2);
  EXPECT_EQ(copy, text + "\r\n");
  EXPECT_EQ(Get("out.txt"), text + "\r\n\r\n");
}

TEST_F(TextFilesTest, MissingFileForInputIsError53) {
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("none.txt"), Mode::Input, 1); }), Err::FileNotFound);
  EXPECT_FALSE(files.IsOpen(1));
}

TEST_F(TextFilesTest, FileBeingWrittenOrWrittenAgainIsError55) {
  Put("a.txt", "x\r\n");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("a.txt"), Mode::Output, 2); }), Err::FileAlreadyOpen);
  // The same file by another spelling of its path.
  EXPECT_EQ(ErrorOf([&] { files.Open(dir.path() + "/./a.txt", Mode::Output, 2); }),
            Err::FileAlreadyOpen);
  files.Open(Path("b.txt"), Mode::Output, 2);
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("b.txt"), Mode::Input, 3); }), Err::FileAlreadyOpen);
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("b.txt"), Mode::Output, 3); }), Err::FileAlreadyOpen);
  EXPECT_FALSE(files.IsOpen(3));
}

TEST_F(TextFilesTest, ANameInAnotherLetterCaseIsTheSameFile) {
  Put("KUVO.CSV", "old\r\n");
  files.Open(Path("KUVO.CSV"), Mode::Input, 1);
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("Kuvo.csv"), Mode::Output, 2); }), Err::FileAlreadyOpen);
  files.Close(1);
  // Written under "KUVO.csv", the existing file is rewritten; no other file appears.
  files.Open(Path("KUVO.csv"), Mode::Output, 2);
  files.PrintLine(2, QByteArray("new"));
  files.Close(2);
  EXPECT_EQ(Get("KUVO.CSV"), "new\r\n");
  EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("KUVO.CSV")});
  files.Open(Path("kuvo.Csv"), Mode::Input, 3);
  EXPECT_EQ(files.LineInput(3), "new");
  files.Close(3);
  files.Kill(Path("kuvo.csv"));
  EXPECT_TRUE(QDir(dir.path()).entryList(QDir::Files).isEmpty());
  // A new file takes the name as written.
  files.Open(Path("Neuf.Txt"), Mode::Output, 4);
  files.Close(4);
  EXPECT_EQ(QDir(dir.path()).entryList(QDir::Files), QStringList{QStringLiteral("Neuf.Txt")});
}

TEST_F(TextFilesTest, FileReadUnderTwoNumbers) {
  Put("a.txt", "one\rtwo\r");
  files.Open(Path("a.txt"), Mode::Input, 1);
  files.Open(dir.path() + "/./a.txt", Mode::Input, 2);
  EXPECT_EQ(files.LineInput(1), "one");
  EXPECT_EQ(files.LineInput(2), "one");
  EXPECT_EQ(files.LineInput(1), "two");
  files.Close(1);
  EXPECT_TRUE(files.IsOpen(Path("a.txt")));
  EXPECT_EQ(ErrorOf([&] { files.Kill(Path("a.txt")); }), Err::FileAlreadyOpen);
  EXPECT_EQ(files.LineInput(2), "two");
}

TEST_F(TextFilesTest, NumberInUseIsError55) {
  Put("a.txt", "x");
  Put("b.txt", "y");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("b.txt"), Mode::Input, 1); }), Err::FileAlreadyOpen);
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("a.txt"), Mode::Input, 1); }), Err::FileAlreadyOpen);
  EXPECT_EQ(ErrorOf([&] { files.Open(Path("c.txt"), Mode::Output, 1); }), Err::FileAlreadyOpen);
  EXPECT_FALSE(QFile::exists(Path("c.txt")));  // refused before the file is made
  EXPECT_EQ(files.LineInput(1), "x");          // the first file is still there
}

TEST_F(TextFilesTest, CloseFreesTheNumberAndThePath) {
  Put("a.txt", "x");
  EXPECT_EQ(files.FreeFile(), 1);
  files.Open(Path("a.txt"), Mode::Input, files.FreeFile());
  EXPECT_EQ(files.FreeFile(), 2);
  files.Open(Path("b.txt"), Mode::Output, files.FreeFile());
  EXPECT_EQ(files.FreeFile(), 3);
  files.Close(1);
  EXPECT_EQ(files.FreeFile(), 1);
  EXPECT_FALSE(files.IsOpen(Path("a.txt")));
  EXPECT_TRUE(files.IsOpen(Path("b.txt")));
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(files.LineInput(1), "x");
}

TEST_F(TextFilesTest, NumberNotOpenIsError52) {
  EXPECT_EQ(ErrorOf([&] { files.Close(4); }), 52);
  EXPECT_EQ(ErrorOf([&] { files.Eof(4); }), 52);
  EXPECT_EQ(ErrorOf([&] { files.LineInput(4); }), 52);
  EXPECT_EQ(ErrorOf([&] { files.PrintLine(4, QByteArray("x")); }), 52);
}

TEST_F(TextFilesTest, WrongDirectionIsError54) {
  Put("a.txt", "x");
  files.Open(Path("a.txt"), Mode::Input, 1);
  files.Open(Path("b.txt"), Mode::Output, 2);
  EXPECT_EQ(ErrorOf([&] { files.PrintLine(1, QByteArray("x")); }), Err::BadFileMode);
  EXPECT_EQ(ErrorOf([&] { files.LineInput(2); }), Err::BadFileMode);
  EXPECT_EQ(ErrorOf([&] { files.InputChar(2); }), Err::BadFileMode);
}

TEST_F(TextFilesTest, KillDeletesAClosedFile) {
  Put("a.txt", "x");
  files.Kill(Path("a.txt"));
  EXPECT_FALSE(QFile::exists(Path("a.txt")));
  EXPECT_EQ(ErrorOf([&] { files.Kill(Path("a.txt")); }), Err::FileNotFound);
}

TEST_F(TextFilesTest, KillOfAnOpenFileIsError55) {
  Put("a.txt", "x");
  files.Open(Path("a.txt"), Mode::Input, 1);
  EXPECT_EQ(ErrorOf([&] { files.Kill(Path("a.txt")); }), Err::FileAlreadyOpen);
  EXPECT_TRUE(QFile::exists(Path("a.txt")));
}

TEST(TextFilesEnd, WhatIsStillOpenReachesTheDiskAtTheEnd) {
  QTemporaryDir dir;
  const QString path = dir.filePath(QStringLiteral("out.txt"));
  {
    TextFiles files;
    files.Open(path, TextFiles::Mode::Output, 1);
    files.PrintLine(1, QByteArray("kept"));
  }
  QFile f(path);
  ASSERT_TRUE(f.open(QIODevice::ReadOnly));
  EXPECT_EQ(f.readAll(), "kept\r\n");
}

}  // namespace
}  // namespace kuvo
