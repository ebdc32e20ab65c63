#pragma once

#include <cstdint>
#include <string_view>

#include "io/file_path.h"
#include "io/text_pieces.h"

namespace brenu {

enum class Replaced : std::uint8_t {
  kNotOpened,   // the file cannot be opened for writing; nothing has changed
  kNotWritten,  // it could be opened, but not all of the text could be written
  kDone
};

// Creates the file or replaces its contents, with the line ends of the platform.
//
// The new contents are complete on the disk, in a file beside the old one, before they take its
// place: whatever fails, the file holds all of the old text or all of the new.  The file keeps its
// permissions, its group and, as far as the system allows, its owner; a symbolic link keeps
// pointing to it; another hard link keeps the old contents.  Where that cannot be done (a device, a
// folder that takes no new file, a group that cannot be kept) the file is written in place, without
// that promise once the whole text has been made.  The text may be asked for twice.
Replaced ReplaceFile(const FilePath& path, const TextSource& text);
inline Replaced ReplaceFile(const FilePath& path, std::string_view text) {
  return ReplaceFile(path, [text](const TextSink& sink) { sink(text); });
}

}  // namespace brenu
