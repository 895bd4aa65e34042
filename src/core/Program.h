#pragma once

#include <QString>
#include <functional>
#include <map>
#include <memory>
#include <typeindex>
#include <vector>

#include "core/Errors.h"

namespace kuvo {

class Form;
class Program;
class Platform;
class Module1;
class TextFiles;

// How a window is made, by its name.
struct WindowMaker {
  const char* name;
  std::unique_ptr<Form> (*make)(Program&);
};
using WindowMakers = std::vector<WindowMaker>;

// Thrown to unwind everything when the program ends; nothing but the outermost
// caller catches it.
struct ProgramEnd {};

// The running program: the shared module, the open files and the one instance
// of each window, created on first use. Nothing lives in static globals, so a
// test builds a fresh program.
class Program {
 public:
  // `windows` lists every window of the program, the main window first.
  Program(Platform& platform, const WindowMakers& windows);
  ~Program();
  Program(const Program&) = delete;
  Program& operator=(const Program&) = delete;

  Platform& Sys() const { return platform_; }
  Module1& M() const { return *module1_; }
  TextFiles& Files() const { return *files_; }

  // The one instance of window W, created on first use.
  template <class W>
  W& Win() {
    auto it = forms_.find(std::type_index(typeid(W)));
    if (it == forms_.end()) it = forms_.emplace(typeid(W), Create(W::kName)).first;
    return static_cast<W&>(*it->second);
  }
  // A window by its name, created when `create` is set; null when unknown.
  Form* FormByName(const QString& name, bool create);
  // The windows created so far.
  std::vector<Form*> ExistingForms() const;
  // The names of all windows the program has.
  QStringList FormNames() const;
  // The main window, the first of the list, made on first use; null from
  // MainFormIfMade while it is not made.
  Form& MainForm();
  Form* MainFormIfMade() const;

  // Starts the program: the main window loads and shows.
  void Start();
  // Runs a user event. An error nothing caught becomes the platform's report and
  // ends the program; what was written is committed first.
  void RunEvent(const std::function<void()>& handler);
  // Quits: the child windows unload, then the main window, then the program
  // ends. Nothing is asked and no handler of the windows runs.
  [[noreturn]] void Quit();
  // Ends the program at once (the Quit path and fatal errors).
  [[noreturn]] void End();
  bool Ended() const { return ended_; }

 private:
  std::unique_ptr<Form> Create(const QString& name);
  void CommitStore();

  Platform& platform_;
  const WindowMakers& windows_;
  std::unique_ptr<Module1> module1_;
  std::unique_ptr<TextFiles> files_;
  std::map<std::type_index, std::unique_ptr<Form>> forms_;
  bool ended_ = false;
};

}  // namespace kuvo
