// The committed seeds and findings of the fuzz targets, replayed through the
// same code as the targets: every input ends normally, and what the converter
// writes reads back to the same draws.
#include <gtest/gtest.h>
#include <QDir>
#include <QFile>

#include "FuzzCheck.h"
#include "ImportScratch.h"

namespace kuvo::fuzz {
namespace {

// Every input of one target's corpus, by file name.
std::vector<std::pair<QString, QByteArray>> Corpus(const char* target) {
  QDir dir(QStringLiteral(KUVO_SOURCE_DIR "/tests/fuzz/corpus/") + QLatin1String(target));
  std::vector<std::pair<QString, QByteArray>> inputs;
  for (const QString& name : dir.entryList(QDir::Files, QDir::Name)) {
    QFile file(dir.filePath(name));
    if (file.open(QIODevice::ReadOnly)) inputs.emplace_back(name, file.readAll());
  }
  return inputs;
}

TEST(FuzzCorpus, OperatorFilesReadAndWriteBack) {
  const auto inputs = Corpus("read_history");
  ASSERT_GE(inputs.size(), 6u);
  for (const auto& [name, bytes] : inputs) {
    const char* fault = ReadOneFile(bytes);
    EXPECT_EQ(fault, nullptr) << name.toStdString() << ": " << fault;
  }
}

TEST(FuzzCorpus, MergedFilesWriteBack) {
  const auto inputs = Corpus("merge_histories");
  ASSERT_GE(inputs.size(), 5u);
  for (const auto& [name, bytes] : inputs) {
    const char* fault = MergeTwoFiles(bytes);
    EXPECT_EQ(fault, nullptr) << name.toStdString() << ": " << fault;
  }
}

TEST(FuzzCorpus, ImportWindowEndsNormally) {
  const auto inputs = Corpus("import_window");
  ASSERT_GE(inputs.size(), 5u);
  ImportScratch scratch;
  for (const auto& [name, bytes] : inputs) {
    const QString seen = scratch.Load(bytes);
    // The window was reached: whatever the file, the user saw it open.
    EXPECT_TRUE(seen.contains(QLatin1String("SHOW ChargeMiseJour"))) << name.toStdString();
  }
}

}  // namespace
}  // namespace kuvo::fuzz
