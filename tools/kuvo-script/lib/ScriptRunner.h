#pragma once

#include <QString>
#include <QStringList>
#include <functional>
#include <map>
#include <memory>
#include <stdexcept>
#include <vector>

struct sqlite3;

namespace kuvo {

class Program;
class Form;
class Control;
class ScriptedPlatform;

// A script that cannot be run as written: the driver exits with status 2.
struct ScriptError : std::runtime_error {
  ScriptError(int line, const QString& message)
      : std::runtime_error(message.toStdString()), line(line) {}
  int line;
};

// Runs a scenario script against the real window logic on the scripted
// platform, writing what a user would see.
class ScriptRunner {
 public:
  struct Line {
    int number = 0;
    QStringList words;
  };

  // `folder` is the application folder; `scriptDir` resolves relative sources.
  ScriptRunner(QString folder, QString scriptDir);
  ~ScriptRunner();

  // Splits a script into command lines; a malformed line raises ScriptError.
  static std::vector<Line> Parse(const QString& text);

  // Runs the lines; returns when the script or the program has ended. It may
  // be called again with more lines while the program runs.
  // ScriptError escapes for a malformed command.
  void Run(std::vector<Line> lines);
  // Parses and runs a piece of script; returns what it wrote.
  QString RunText(const QString& text);
  bool Ended() const { return ended_; }

  // What has been written so far.
  const QString& Output() const { return output_; }
  // Each line written is also handed here as it happens (for a console).
  std::function<void(const QString&)> Echo;

  Program& program() { return *program_; }
  ScriptedPlatform& platform() { return *platform_; }

 private:
  bool RunNext();
  void Execute(const Line& line);
  void Write(const QString& text);
  void Expect(const Line& line, int minWords, int maxWords = -1);

  // Command groups.
  void StoreCommand(const Line& line);
  void SqlCommand(const Line& line);
  void UserCommand(const Line& line);
  void CheckUserWords(const Line& line);
  void TickCommand(const Line& line);
  void FaultCommand(const Line& line);
  void GetCommand(const Line& line);
  void DumpCommand(const Line& line);
  // dump FORM.CONTROL: a drawing area's boxes, or a control's properties.
  void DumpControl(const Line& line);

  // Addressing: FORM.CONTROL[(I)]
  struct Target {
    Form* form = nullptr;
    QString formName;
    Control* control = nullptr;
  };
  Target Resolve(const Line& line, const QString& address, bool needControl);
  bool Blocked(const Form& form) const;
  void Ignored(const QString& name);
  QString Path(const QString& file) const;

  QString folder_;
  QString scriptDir_;
  std::unique_ptr<ScriptedPlatform> platform_;
  std::unique_ptr<Program> program_;
  std::vector<Line> lines_;
  size_t next_ = 0;
  std::map<long, std::vector<Line>> atYield_;
  QString output_;
  bool ended_ = false;
  // The store that `fault store` makes fail, until it has failed.
  sqlite3* faultDb_ = nullptr;
  bool faultArmed_ = false;
};

}  // namespace kuvo
