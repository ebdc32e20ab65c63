// Names of files as the system takes them, whatever the characters.
#pragma once

#include <cstdio>
#include <filesystem>

namespace brenu {

using FilePath = std::filesystem::path;

// As the functions of the 61 take them: on Windows in the code page of the system, elsewhere bytes
// that are passed on unchanged.
FilePath NarrowPath(const char* text);
// On Windows in UTF-8, elsewhere bytes that are passed on unchanged.
FilePath Utf8Path(const char* text);

// As fopen; null when the file cannot be opened.
std::FILE* OpenFile(const FilePath& path, const char* mode);

}  // namespace brenu
