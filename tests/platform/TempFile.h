// Platform test helpers: a unique file in the test directory (ZNMT64_TEST_TMP, else the system's),
// removed at the end; an archive on such a file; the cause of a thrown framework exception.
#pragma once
#include <unistd.h>
#include <znmt64/platform/CArchive.h>

#include <atomic>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

class TempFile {
 public:
  TempFile() {
    static std::atomic<unsigned> counter{0};
    const char* env = std::getenv("ZNMT64_TEST_TMP");
    const auto dir = env != nullptr && *env != '\0' ? std::filesystem::path(env)
                                                     : std::filesystem::temp_directory_path();
    std::filesystem::create_directories(dir);
    m_path = dir / ("pf-" + std::to_string(::getpid()) + "-" + std::to_string(counter++));
    std::filesystem::remove(m_path);
  }
  ~TempFile() {
    std::error_code ec;
    std::filesystem::remove(m_path, ec);
  }
  TempFile(const TempFile&) = delete;
  TempFile& operator=(const TempFile&) = delete;

  const char* c_str() const { return m_path.c_str(); }
  std::vector<unsigned char> Bytes() const {
    std::ifstream in(m_path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
  }
  void Put(const std::vector<unsigned char>& bytes) const {
    std::ofstream out(m_path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), std::streamsize(bytes.size()));
  }

 private:
  std::string m_path;
};

using Bytes = std::vector<unsigned char>;

// A file and an archive on it: a storing one creates the file, a loading one reads it. The
// archive's destructor flushes, the file's closes.
struct ArchiveOn {
  ArchiveOn(const TempFile& tmp, UINT mode, int bufSize = 4096)
      : file(tmp.c_str(), (mode & CArchive::load) != 0 ? UINT(CFile::modeRead | CFile::shareDenyWrite)
                                                       : CFile::modeCreate | CFile::modeWrite),
        ar(&file, mode, bufSize) {}
  CFile file;
  CArchive ar;
};

// Runs f and returns the m_cause of the E* it throws (0 for an E without one), deleting it; -1 when
// nothing is thrown.
template <class E, class F>
int CauseOf(F&& f) {
  try {
    f();
  } catch (E* e) {
    int cause = 0;
    if constexpr (requires { e->m_cause; }) cause = e->m_cause;
    e->Delete();
    return cause;
  }
  return -1;
}
