#include "gui/Desktop.h"

#include <sys/socket.h>
#include <unistd.h>
#include <QCoreApplication>
#include <QDateTime>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLibraryInfo>
#include <QSocketNotifier>
#include <QStandardPaths>
#include <QStringList>
#include <QTranslator>
#include <csignal>
#include <cstdio>
#include <cstdlib>

namespace kuvo {

namespace {

constexpr const char* kStoreName = "Kuvo.Mdb";

bool started = false;
QStringList& Pending() {
  static QStringList messages;
  return messages;
}

void SayNoDisplay() {
  std::fprintf(stderr, "%s\n", NoDisplayText().toLocal8Bit().constData());
  std::fflush(stderr);
}

// Until the application is up, Qt's messages are held back: a failure to
// reach the display becomes the program's one line instead of Qt's abort.
void StartupMessages(QtMsgType type, const QMessageLogContext&, const QString& message) {
  if (!started) {
    if (type == QtFatalMsg) {
      SayNoDisplay();
      std::_Exit(1);
    }
    Pending() << message;
    return;
  }
  std::fprintf(stderr, "%s\n", message.toLocal8Bit().constData());
}

QTranslator*& Installed() {
  static QTranslator* translator = nullptr;
  return translator;
}

// The signal handler writes a byte here; the event loop reads it.
int signalPipe[2] = {-1, -1};

void OnSignal(int) {
  const char byte = 1;
  [[maybe_unused]] const ssize_t n = ::write(signalPipe[0], &byte, 1);
}

constexpr int kSessionSignals[] = {SIGTERM, SIGHUP, SIGINT};

}  // namespace

SessionEnd::SessionEnd(std::function<void()> end) : end_(std::move(end)) {
  if (::socketpair(AF_UNIX, SOCK_STREAM, 0, signalPipe) != 0) return;
  notifier_ = std::make_unique<QSocketNotifier>(signalPipe[1], QSocketNotifier::Read);
  QObject::connect(notifier_.get(), &QSocketNotifier::activated, notifier_.get(), [this] {
    char byte;
    [[maybe_unused]] const ssize_t n = ::read(signalPipe[1], &byte, 1);
    if (end_) end_();
  });
  struct sigaction action = {};
  action.sa_handler = OnSignal;
  sigemptyset(&action.sa_mask);
  action.sa_flags = SA_RESTART;
  for (int s : kSessionSignals) sigaction(s, &action, nullptr);
}

SessionEnd::~SessionEnd() {
  for (int s : kSessionSignals) std::signal(s, SIG_DFL);
  notifier_.reset();
  for (int& fd : signalPipe) {
    if (fd >= 0) ::close(fd);
    fd = -1;
  }
}

QString NoDisplayText() {
  return QStringLiteral(
      "Kuvo a besoin d'une session graphique pour s'afficher, et aucun écran n'est "
      "disponible : lancez-le depuis le bureau.");
}

DisplayGuard::DisplayGuard() {
  const bool platformChosen = !qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM");
  if (!platformChosen && qEnvironmentVariableIsEmpty("DISPLAY") &&
      qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY")) {
    SayNoDisplay();
    std::exit(1);
  }
  qInstallMessageHandler(StartupMessages);
}

void DisplayGuard::Started() {
  started = true;
  qInstallMessageHandler(nullptr);
  for (const QString& m : Pending()) std::fprintf(stderr, "%s\n", m.toLocal8Bit().constData());
  Pending().clear();
}

bool InstallQtTranslations(QCoreApplication& app, const QLocale& locale) {
  if (QTranslator* old = Installed()) {
    QCoreApplication::removeTranslator(old);
    delete old;
    Installed() = nullptr;
  }
  auto* translator = new QTranslator(&app);
  if (!translator->load(locale, QStringLiteral("qtbase"), QStringLiteral("_"),
                        QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
    delete translator;
    return false;
  }
  QCoreApplication::installTranslator(translator);
  Installed() = translator;
  return true;
}

QString ShippedStore(const QString& programFolder) {
  const QDir dir(programFolder);
  for (const QString& path : {dir.filePath(QStringLiteral(KUVO_SHARE_FROM_BIN "/Kuvo.Mdb")),
                              dir.filePath(QStringLiteral("../store/Kuvo.Mdb"))})
    if (QFileInfo(path).isFile()) return QDir::cleanPath(path);
  return {};
}

QString ApplicationFolder(const QString& programFolder, const QString& userFolder) {
  if (QFileInfo(QDir(programFolder).filePath(QLatin1String(kStoreName))).isFile())
    return programFolder;
  const QString store = QDir(userFolder).filePath(QLatin1String(kStoreName));
  if (!QFileInfo::exists(store)) {
    // A log left beside a deleted store would be played again onto the fresh
    // copy: it goes first, so that a fresh store is the shipped one.
    for (const char* suffix : {"-wal", "-shm", "-journal"})
      QFile::remove(store + QLatin1String(suffix));
    const QString shipped = ShippedStore(programFolder);
    if (!shipped.isEmpty() && QDir().mkpath(userFolder) && QFile::copy(shipped, store))
      QFile::setPermissions(
          store, QFile::ReadOwner | QFile::WriteOwner | QFile::ReadGroup | QFile::ReadOther);
  }
  return userFolder;
}

QString NewReportFile() {
  QString folder = QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation);
  if (folder.isEmpty()) folder = QDir::homePath();
  QDir().mkpath(folder);
  const QString stamp =
      QDateTime::currentDateTime().toString(QStringLiteral("yyyy-MM-dd-HH'h'mm'm'ss"));
  return QDir(folder).filePath(QStringLiteral("Kuvo-rapport-%1.pdf").arg(stamp));
}

}  // namespace kuvo
