#pragma once

#include <QString>

namespace kuvo {

// The sequential text files of the run, by file number: read a character, read a
// line up to a carriage return, write a line ended by carriage return and line
// feed, delete a file.
class TextFiles {
 public:
  TextFiles();
  ~TextFiles();
};

}  // namespace kuvo
