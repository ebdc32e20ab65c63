// Names of files as the system takes them, whatever the characters.
#pragma once

#include <cstdio>
#include <filesystem>

namespace brenu {

using FilePath = std::filesystem::path;

// Text is in the code page of the system or in UTF-8 on Windows.  Elsewhere it is bytes and passed
// on unchanged, whichever of these takes it.
FilePath NarrowPath(const char* text);
FilePath Utf8Path(const char* text);

// As fopen.
std::FILE* OpenFile(const FilePath& path, const char* mode);

}  // namespace brenu
