// For unit tests: a temporary installation root for the whole test process.
// The first call creates it and points STASHWELL_ROOT at it, so it must come
// before anything reads the root (StashwellRoot reads it once per process).
#ifndef PLATFORM_TEST_ROOT_H_
#define PLATFORM_TEST_ROOT_H_

#include <stdlib.h>
#include <sys/stat.h>

#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

namespace testing_root {

inline const std::string& Path() {
  static const std::string root = [] {
    char tmpl[] = "/tmp/cyclectl-unit.XXXXXX";
    std::string dir = mkdtemp(tmpl);
    chmod(dir.c_str(), 0755);
    setenv("STASHWELL_ROOT", dir.c_str(), 1);
    static struct Remover {
      std::string dir;
      ~Remover() {
        std::error_code ec;
        std::filesystem::remove_all(dir, ec);
      }
    } remover{dir};
    return dir;
  }();
  return root;
}

// Writes a file under the root, creating its folders.
inline void Write(const std::string& relpath, const std::string& text) {
  std::filesystem::path p = std::filesystem::path(Path()) / relpath;
  std::filesystem::create_directories(p.parent_path());
  std::ofstream(p, std::ios::binary | std::ios::trunc) << text;
}

inline void Remove(const std::string& relpath) {
  std::error_code ec;
  std::filesystem::remove_all(std::filesystem::path(Path()) / relpath, ec);
}

// Copies the built message catalogs and status texts into the root.
inline void InstallData() {
  namespace fs = std::filesystem;
  fs::create_directories(fs::path(Path()) / "share");
  for (const char* d : {"msg", "status"})
    fs::copy(fs::path(STASHWELL_SHARE_DIR) / d, fs::path(Path()) / "share" / d,
             fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

// Every line of every log file in a folder under the root, without the time
// and process id: "<2> source: text".
inline std::vector<std::string> LogLines(const std::string& relDir) {
  std::vector<std::string> lines;
  std::error_code ec;
  for (const auto& e : std::filesystem::directory_iterator(Path() + "/" + relDir, ec)) {
    std::ifstream in(e.path());
    for (std::string l; std::getline(in, l);) lines.push_back(l.substr(l.find("] ") + 2));
  }
  return lines;
}

}  // namespace testing_root

#endif  // PLATFORM_TEST_ROOT_H_
