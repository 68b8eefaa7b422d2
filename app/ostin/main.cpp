// ostin: the command-line host. It opens or creates a document of the host stand-in,
// loads the converter plug-in, drives its menu commands as the host program would and
// plays its user from the command line.
#include <csignal>
#include <cstring>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <unistd.h>
#include <vector>

#include "platform/language.h"
#include "plugin_loader.h"
#include "sim/document_text.h"
#include "sim/host.h"
#include "terminal_user.h"

namespace {

using ostin::sim::Document;
using ostin::sim::DocumentError;
using ostin::sim::Host;

constexpr int kExitOk = 0;
constexpr int kExitFailure = 1;
constexpr int kExitUsage = 2;
constexpr int kExitCancelled = 130;
constexpr int32_t kMainWindow = 1;
constexpr int16_t kExportCommand = 1;

constexpr const char* kUsage = R"(Usage: ostin COMMAND [ARGUMENTS] [OPTIONS]

ostin plays the notation program for the Ostin Light converter: it opens a document,
loads the converter and runs its menu commands, answering its dialogs from the command
line. Documents are JSON files of the notation program's stand-in.

Commands:
  new -o DOC                  Write a new, empty document: what the notation program
                              holds for a new score (fonts, preferences, one staff,
                              a few empty measures).
  export DOC -o FILE.xml      Export the document DOC to a MusicXML file. The document
                              itself is not changed. An existing FILE.xml is replaced
                              only when you answer Yes (or give --yes).
  show DOC                    List the document's settings and records by type and key.
  import FILE.xml -o DOC      Import a MusicXML file into a new document.
                              (The import is not built yet.)
  convert FILE.xml -o OUT.xml Import a MusicXML file into a new document and export it
                              again. (The import is not built yet.)

Options:
  -o, --output PATH           The file to write.
  --host-year YEAR            The year of the notation program to play, 2000 to 2004.
                              Default: the document's own (2004 for a new document).
  --lang LANG                 Language of the converter's messages: ru or en (the main
                              table), de (German) or it (Italian). Default: from
                              LC_ALL, LC_MESSAGES or LANG.
  -y, --yes                   Answer Yes when asked whether to replace a file. Without
                              it the question is asked on the terminal, and answered
                              No when there is no terminal.
  -h, --help                  Show this text.

While an export runs, a progress bar is drawn on stderr when stderr is a terminal, and
Ctrl-C cancels the run: no file is written then.

Exit status: 0 when the command did its work, 1 when a failure or a refusal was shown
(or the dialog was left without OK), 2 for wrong usage, 130 when the run was cancelled.
Messages of the converter appear on stderr.
)";

struct Options {
  std::string Command;
  std::vector<std::string> Arguments;
  std::string Output;
  std::optional<int32_t> HostYear;
  bool Yes = false;
};

[[noreturn]] void UsageError(const std::string& text) {
  std::cerr << "ostin: " << text << "\nTry 'ostin --help'." << std::endl;
  std::exit(kExitUsage);
}

std::string OptionValue(int& i, int argc, char** argv) {
  if (i + 1 >= argc) UsageError(std::string(argv[i]) + " needs a value");
  return argv[++i];
}

int32_t ParseYear(const std::string& text) {
  char* end = nullptr;
  long year = std::strtol(text.c_str(), &end, 10);
  if (text.empty() || *end != '\0' || year < 2000 || year > 2004)
    UsageError("--host-year takes a year from 2000 to 2004, not '" + text + "'");
  return static_cast<int32_t>(year);
}

Options ParseOptions(int argc, char** argv) {
  Options options;
  for (int i = 1; i < argc; ++i) {
    std::string arg = argv[i];
    if (arg == "-h" || arg == "--help") {
      std::cout << kUsage;
      std::exit(kExitOk);
    } else if (arg == "-o" || arg == "--output") {
      options.Output = OptionValue(i, argc, argv);
    } else if (arg == "--host-year") {
      options.HostYear = ParseYear(OptionValue(i, argc, argv));
    } else if (arg == "--lang") {
      std::string name = OptionValue(i, argc, argv);
      int32_t language = ostin::LanguageFromName(name);
      if (language == 0) UsageError("--lang takes ru, en, de or it, not '" + name + "'");
      ostin::SetLanguage(language);
    } else if (arg == "-y" || arg == "--yes") {
      options.Yes = true;
    } else if (arg.size() > 1 && arg[0] == '-') {
      UsageError("unknown option " + arg);
    } else if (options.Command.empty()) {
      options.Command = arg;
    } else {
      options.Arguments.push_back(arg);
    }
  }
  if (options.Command.empty()) UsageError("no command given");
  return options;
}

void NeedArguments(const Options& options, size_t count, bool output) {
  if (options.Arguments.size() != count)
    UsageError(options.Command + " takes " + std::to_string(count) + " file argument" +
               (count == 1 ? "" : "s"));
  if (output && options.Output.empty()) UsageError(options.Command + " needs -o PATH");
}

// Ctrl-C asks the running mass edit to stop; a second one ends the program at once.
void OnInterrupt(int) {
  if (Host::Instance().CancelRequested.exchange(true)) _exit(kExitCancelled);
}

class ProgressBar {
public:
  void Draw(int64_t done, int64_t total) {
    int percent = total > 0 ? static_cast<int>(std::min<int64_t>(100, done * 100 / total)) : 0;
    if (percent == shown_) return;
    shown_ = percent;
    int filled = percent * kWidth / 100;
    std::cerr << "\r[" << std::string(filled, '#') << std::string(kWidth - filled, ' ') << "] "
              << percent << "%" << std::flush;
    drawn_ = true;
  }
  ~ProgressBar() {
    if (drawn_) std::cerr << "\r" << std::string(kWidth + 8, ' ') << "\r" << std::flush;
  }

private:
  static constexpr int kWidth = 40;
  int shown_ = -1;
  bool drawn_ = false;
};

std::string WindowTitle(const Document& doc, int32_t year) {
  std::string name = doc.Path.empty() ? (doc.Title.empty() ? "Untitled" : doc.Title)
                                      : std::filesystem::path(doc.Path).filename().string();
  return "Finale " + std::to_string(year) + " - [" + name + "]";
}

std::optional<Document> ReadDocument(const std::string& path) {
  try {
    return Document::LoadFile(path);
  } catch (const DocumentError& e) {
    std::cerr << "ostin: " << e.what() << std::endl;
    return std::nullopt;
  }
}

// Starts the plug-in as the host does at its own start: version, init, the menu.
void StartPlugIn(ostin::FinalePlugIn& plugin) {
  plugin.FinalePlugIn_Version(0x09000000);
  int32_t flags = 0;
  plugin.FinalePlugIn_Init(kMainWindow, flags);
  for (int16_t index = 0;; ++index) {
    std::string item, message, undo;
    bool needRegion, useStatus, launchable, terminateAfterInvoke, terminateAfterDialog;
    if (!plugin.FinalePlugIn_Enumerate(kMainWindow, index, item, message, undo, needRegion,
                                       useStatus, launchable, terminateAfterInvoke,
                                       terminateAfterDialog))
      break;
    if (useStatus) plugin.FinalePlugIn_GetMenuStatus(index);
  }
}

// Runs one menu command of the plug-in with the user at the terminal.
int RunCommand(int16_t command, const std::string& fileName, bool yes) {
  Host& host = Host::Instance();
  ostin::cli::TerminalUser user({std::filesystem::absolute(fileName).lexically_normal().string(),
                                 yes, WindowTitle(host.Doc(), host.Version())});
  ostin::platform::SetWindows(&user);
  ProgressBar bar;
  if (isatty(STDERR_FILENO))
    host.ProgressListener = [&bar](int64_t done, int64_t total) { bar.Draw(done, total); };
  std::signal(SIGINT, OnInterrupt);
  // Tests stand for a user who presses Ctrl-C at the n-th progress step.
  if (const char* at = std::getenv("OSTIN_TEST_CANCEL_AT"))
    host.CancelAtProgressCall = std::atoi(at);
  try {
    ostin::cli::PlugInLibrary library(ostin::cli::PlugInLibrary::DefaultPath());
    std::unique_ptr<ostin::FinalePlugIn> plugin = library.CreateObject();
    StartPlugIn(*plugin);
    plugin->FinalePlugIn_Invoke(kMainWindow, command, 0, 0);
    plugin->FinalePlugIn_Terminate(kMainWindow);
  } catch (const std::exception& e) {
    std::cerr << "ostin: " << e.what() << std::endl;
    ostin::platform::SetWindows(nullptr);
    return kExitFailure;
  }
  std::signal(SIGINT, SIG_DFL);
  host.ProgressListener = nullptr;
  ostin::platform::SetWindows(nullptr);
  if (host.CancelRequested) return kExitCancelled;
  if (user.FailureShown() || user.DialogCancelled()) return kExitFailure;
  return kExitOk;
}

int CommandNew(const Options& options) {
  NeedArguments(options, 0, true);
  try {
    Document doc = Host::NewDocument();
    if (options.HostYear) doc.FinaleVersion = *options.HostYear;
    doc.SaveFile(options.Output);
  } catch (const DocumentError& e) {
    std::cerr << "ostin: " << e.what() << std::endl;
    return kExitFailure;
  }
  return kExitOk;
}

int CommandExport(const Options& options) {
  NeedArguments(options, 1, true);
  std::optional<Document> doc = ReadDocument(options.Arguments[0]);
  if (!doc) return kExitFailure;
  Host::Instance().Open(std::move(*doc));
  Host::Instance().VersionOption = options.HostYear;
  return RunCommand(kExportCommand, options.Output, options.Yes);
}

int CommandShow(const Options& options) {
  NeedArguments(options, 1, false);
  std::optional<Document> doc = ReadDocument(options.Arguments[0]);
  if (!doc) return kExitFailure;
  std::cout << ostin::sim::DescribeDocument(*doc);
  return kExitOk;
}

int CommandImport(const Options& options) {
  NeedArguments(options, 1, true);
  std::cerr << "ostin: " << options.Command
            << ": the MusicXML import is not built yet; nothing was written" << std::endl;
  return kExitFailure;
}

} // namespace

int main(int argc, char** argv) {
  Options options = ParseOptions(argc, argv);
  if (options.Command == "new") return CommandNew(options);
  if (options.Command == "export") return CommandExport(options);
  if (options.Command == "show") return CommandShow(options);
  if (options.Command == "import" || options.Command == "convert") return CommandImport(options);
  UsageError("unknown command '" + options.Command + "'");
}
