#include "core/Property.h"

namespace kuvo {

QString QuoteText(const QString& text) {
  QString out;
  out.reserve(text.size() + 2);
  out += QLatin1Char('"');
  for (QChar c : text) {
    switch (c.unicode()) {
      case '"': out += QLatin1String("\\\""); break;
      case '\\': out += QLatin1String("\\\\"); break;
      case '\n': out += QLatin1String("\\n"); break;
      case '\r': out += QLatin1String("\\r"); break;
      case '\t': out += QLatin1String("\\t"); break;
      default: out += c;
    }
  }
  out += QLatin1Char('"');
  return out;
}

QString PropValue::Format() const {
  switch (kind_) {
    case Kind::Text: return QuoteText(text_);
    case Kind::Bool: return i_ ? QStringLiteral("True") : QStringLiteral("False");
    case Kind::Int: return QString::number(i_);
    case Kind::Double: return QString::number(d_, 'g', 15);
    case Kind::Date: return date_.toString(QStringLiteral("yyyy-MM-dd"));
    case Kind::Colour:
      return QStringLiteral("%1")
          .arg(static_cast<unsigned>(i_) & 0xFFFFFFu, 6, 16, QLatin1Char('0'))
          .toUpper();
    case Kind::Null: return QStringLiteral("Null");
    case Kind::NotLoaded: return QStringLiteral("<not loaded>");
  }
  return {};
}

}  // namespace kuvo
