#include "core/TextFiles.h"

namespace kuvo {

TextFiles::TextFiles() = default;
TextFiles::~TextFiles() = default;

}  // namespace kuvo
