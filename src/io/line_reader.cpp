#include "io/line_reader.h"

#include <cerrno>

namespace brenu {

namespace {

constexpr std::size_t kBufferSize = 1 << 16;

Code FaultOf(const FilePath& path, int error) {
  if (error == ENOENT) return BRENU_FILE_MISSING;
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored) ? BRENU_FILE_IS_FOLDER
                                                      : BRENU_FILE_NOT_OPENED;
}

}  // namespace

LineReader::LineReader(const FilePath& path)
    : m_file(OpenFile(path, "r")), m_buffer(std::make_unique<char[]>(kBufferSize)) {
  // Some systems open a folder as if it were a file; only the first read tells.
  if (m_file != nullptr && (Refill() || !HasFailed())) return;
  m_openFault = FaultOf(path, errno);
  m_file.reset();
}

bool LineReader::Refill() {
  if (m_file == nullptr) return false;
  const std::size_t count = std::fread(m_buffer.get(), 1, kBufferSize, m_file.get());
  m_rest = {m_buffer.get(), count};
  return count > 0;
}

bool LineReader::Next(std::string& line) {
  line.clear();
  m_isCut = false;
  if (m_rest.empty() && !Refill()) return false;
  do {
    const std::size_t end = m_rest.find('\n');
    const std::string_view piece = m_rest.substr(0, end);
    const std::size_t room = kLongestLine - line.size();
    line += piece.substr(0, room);
    m_isCut = m_isCut || piece.size() > room;
    if (end != std::string_view::npos) {
      m_rest.remove_prefix(end + 1);
      return true;
    }
  } while (Refill());
  m_rest = {};
  return !HasFailed();
}

}  // namespace brenu
