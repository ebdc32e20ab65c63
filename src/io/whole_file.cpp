#include "io/whole_file.h"

#include <array>
#include <cerrno>
#include <memory>

#include "io/line_reader.h"

namespace brenu {

Outcome ReadWholeFile(const FilePath& path, std::string& text) {
  text.clear();
  std::error_code ignored;
  if (std::filesystem::is_directory(path, ignored)) return Error(BRENU_FILE_IS_FOLDER);
  const std::unique_ptr<std::FILE, CloseFile> file(OpenFile(path, "rb"));
  if (file == nullptr) {
    return Error(errno == ENOENT ? BRENU_FILE_MISSING : BRENU_FILE_NOT_OPENED);
  }
  std::array<char, 1 << 16> buffer;
  while (const std::size_t count = std::fread(buffer.data(), 1, buffer.size(), file.get())) {
    text.append(buffer.data(), count);
  }
  if (std::ferror(file.get()) != 0) return Error(BRENU_FILE_NOT_READ);
  if (text.empty()) return Error(BRENU_FILE_EMPTY);
  return {};
}

}  // namespace brenu
