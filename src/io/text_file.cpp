#include "io/text_file.h"

namespace brenu {

namespace {
using FilePtr = std::unique_ptr<std::FILE, CloseFile>;
}  // namespace

LineReader::LineReader(const char* path) : m_file(std::fopen(path, "r")) {
  // Some systems open a folder as if it were a file; only the first read tells.
  if (IsOpen() && !Refill() && std::ferror(m_file.get()) != 0) m_file.reset();
}

bool LineReader::Refill() {
  const std::size_t count = std::fread(m_buffer, 1, sizeof(m_buffer), m_file.get());
  m_rest = {m_buffer, count};
  return count > 0;
}

bool LineReader::Next(std::string& line) {
  line.clear();
  if (!IsOpen() || (m_rest.empty() && !Refill())) return false;
  do {
    const std::size_t end = m_rest.find('\n');
    line += m_rest.substr(0, end);
    if (end != std::string_view::npos) {
      m_rest.remove_prefix(end + 1);
      return true;
    }
  } while (Refill());
  m_rest = {};
  return true;
}

bool ReplaceFile(const char* path, std::string_view text) {
  const FilePtr file(std::fopen(path, "w"));
  if (file == nullptr) return false;
  std::fwrite(text.data(), 1, text.size(), file.get());
  return true;
}

}  // namespace brenu
