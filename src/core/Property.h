#pragma once

#include <QDate>
#include <QString>
#include <functional>

// A property or variable as an observer sees it: the scenario driver prints it,
// a view renders it.
namespace kuvo {

class PropValue {
 public:
  enum class Kind { Text, Bool, Int, Double, Date, Colour, Null, NotLoaded };

  static PropValue Text(const QString& t) { return PropValue(Kind::Text, t); }
  static PropValue Bool(bool b) {
    PropValue v(Kind::Bool);
    v.i_ = b;
    return v;
  }
  static PropValue Int(long long i) {
    PropValue v(Kind::Int);
    v.i_ = i;
    return v;
  }
  static PropValue Double(double d) {
    PropValue v(Kind::Double);
    v.d_ = d;
    return v;
  }
  static PropValue Date(const QDate& date) {
    if (!date.isValid()) return Null();
    PropValue v(Kind::Date);
    v.date_ = date;
    return v;
  }
  // A colour as blue-green-red, the way the program stores it.
  static PropValue Colour(unsigned bgr) {
    PropValue v(Kind::Colour);
    v.i_ = bgr;
    return v;
  }
  static PropValue Null() { return PropValue(Kind::Null); }
  static PropValue NotLoaded() { return PropValue(Kind::NotLoaded); }

  Kind kind() const { return kind_; }
  // The form the scenario driver prints: texts quoted with escapes, True/False,
  // colours as six hex digits, dates as YYYY-MM-DD.
  QString Format() const;

 private:
  explicit PropValue(Kind k, QString t = {}) : kind_(k), text_(std::move(t)) {}
  Kind kind_;
  QString text_;
  long long i_ = 0;
  double d_ = 0;
  QDate date_;
};

// Quotes a text as one word of a script: double quotes, with \" \\ \n \r \t.
QString QuoteText(const QString& text);

// Receives the properties of a control or a window, one name and value at a time.
using PropertySink = std::function<void(const QString& name, const PropValue& value)>;

}  // namespace kuvo
