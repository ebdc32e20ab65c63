#pragma once

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <filesystem>
#include <random>
#include <string>
#include <system_error>

namespace brenu::fuzz {

// A file for the inputs and reports of a fuzz target, in memory where the system has a place for
// that; gone when the program ends.
class ScratchFile {
 public:
  ScratchFile() {
    std::error_code none;
    const std::filesystem::path memory = "/dev/shm";
    const auto folder = std::filesystem::is_directory(memory, none)
                            ? memory
                            : std::filesystem::temp_directory_path();
    m_path = (folder / ("brenu-fuzz-" + std::to_string(std::random_device()()))).string();
  }
  ~ScratchFile() { std::remove(m_path.c_str()); }
  ScratchFile(const ScratchFile&) = delete;
  ScratchFile& operator=(const ScratchFile&) = delete;

  const char* Path() const { return m_path.c_str(); }
  void Write(const std::uint8_t* data, std::size_t size) const {
    std::FILE* const file = std::fopen(Path(), "wb");
    if (file == nullptr) return;
    std::fwrite(data, 1, size, file);
    std::fclose(file);
  }

 private:
  std::string m_path;
};

}  // namespace brenu::fuzz
