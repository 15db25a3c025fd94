#include "platform/platform.h"

#include <cerrno>
#include <charconv>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <initializer_list>
#include <sys/file.h>
#include <sys/stat.h>
#include <sys/utsname.h>
#include <unistd.h>

namespace sondrix {
namespace {

namespace fs = std::filesystem;

std::string_view Environment(const char* name) {
  const char* value = std::getenv(name);
  return value ? value : "";
}

fs::path Executable() {
  std::error_code error;
  return fs::read_symlink("/proc/self/exe", error);
}

struct LanguageRow {
  std::string_view code;
  int number;
};
constexpr LanguageRow Languages[] = {
    {"ru", 0x419}, {"en", 0x409}, {"de", 0x407}, {"C", 0x409}, {"POSIX", 0x409}};

// The first of the variables that is set tells.
int LanguageOf(std::initializer_list<const char*> variables) {
  std::string_view locale;
  for (const char* name : variables) {
    locale = Environment(name);
    if (!locale.empty()) break;
  }
  if (locale.empty()) locale = "C";
  const std::string_view code = locale.substr(0, locale.find_first_of("_.@-"));
  for (const LanguageRow& row : Languages) {
    if (row.code == code) return row.number;
  }
  return 0;
}

int FirstNumber(std::string_view& text) {
  int value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  text.remove_prefix(static_cast<std::size_t>(end - text.data()));
  if (!text.empty()) text.remove_prefix(1);
  return error == std::errc() ? value : 0;
}

}  // namespace

// A file that is opened gets the lowest free descriptor.
void PrepareProcess() {
  for (int descriptor = open("/dev/null", O_RDWR); descriptor >= 0; descriptor = open("/dev/null", O_RDWR)) {
    if (descriptor <= STDERR_FILENO) continue;
    close(descriptor);
    break;
  }
  std::signal(SIGXFSZ, SIG_IGN);
  std::signal(SIGPIPE, SIG_IGN);
}

std::span<const int> EndSignals() {
  static constexpr int signals[] = {SIGINT, SIGTERM, SIGHUP};
  return signals;
}

std::string ProgramFolder() { return Executable().parent_path().string(); }

// An executable here has no extension: a point belongs to its name.
std::string ProgramStem() { return Executable().filename().string(); }

std::string ConfigFolder() {
  const std::string_view config = Environment("XDG_CONFIG_HOME");
  if (config.starts_with('/')) return std::string(config) + "/sondrix";
  return std::string(Environment("HOME")) + "/.config/sondrix";
}

bool CanWriteFolder(std::string_view folder) { return access(std::string(folder).c_str(), W_OK | X_OK) == 0; }

int InterfaceLanguage() { return LanguageOf({"LC_ALL", "LC_MESSAGES", "LANG"}); }

int SystemLanguage() { return LanguageOf({"LANG"}); }

std::pair<int, int> SystemVersion() {
  utsname names{};
  if (uname(&names) != 0) return {0, 0};
  std::string_view release = names.release;
  const int major = FirstNumber(release);
  return {major, FirstNumber(release)};
}

std::string FileManagerAddress() { return {}; }

std::vector<std::string> ProgramArguments(int argc, const char* const* argv) {
  return argc > 0 ? std::vector<std::string>(argv + 1, argv + argc) : std::vector<std::string>();
}

bool IsTerminal(std::FILE* file) { return isatty(fileno(file)) != 0; }

void PutText(std::FILE* file, std::string_view text) { std::fwrite(text.data(), 1, text.size(), file); }

// Another's file, or what is no file, tells nothing of the user's programs. The lock goes with the process,
// however it ends; the file stays.
SingleInstance::SingleInstance(std::string_view name) {
  const std::string_view runtime = Environment("XDG_RUNTIME_DIR");
  std::error_code error;
  const fs::path folder = runtime.empty() ? fs::temp_directory_path(error) : fs::path(runtime);
  const fs::path file = folder / (std::string(name) + "." + std::to_string(getuid()) + ".lock");
  const int descriptor = open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600);
  if (descriptor < 0) return;
  handle_ = descriptor;
  struct stat status {};
  if (fstat(descriptor, &status) != 0 || status.st_uid != geteuid() || !S_ISREG(status.st_mode)) return;
  isFirst_ = flock(descriptor, LOCK_EX | LOCK_NB) == 0 || errno != EWOULDBLOCK;
}

SingleInstance::~SingleInstance() {
  if (handle_ >= 0) close(static_cast<int>(handle_));
}

}  // namespace sondrix
