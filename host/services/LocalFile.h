#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace margindesk {

// Reads a regular file of at most `limit` bytes. None, with the reason, for anything else; neither a pipe nor
// a device can hold it up.
std::optional<std::string> ReadLocalFile(const std::string& fileName, std::int64_t limit,
                                         std::string& reason);

// Makes a new file with the given contents. False, with the reason and no file left, when it cannot.
bool WriteLocalFile(const std::string& fileName, const std::string& contents, std::string& reason);

// Puts a file with the given contents in the place of the one of that name, if there is one: in the file
// system there is always the whole old file or the whole new one, also after a loss of power. False, with the
// reason, when it cannot.
bool ReplaceLocalFile(const std::string& fileName, const std::string& contents, std::string& reason);

// The reason for a file that is larger than it may be.
std::string TooLarge(std::int64_t limit);

}  // namespace margindesk
