#pragma once

#include <filesystem>
#include <string>

namespace margindesk {

// Why a file cannot be a whole shared library for this machine; "" when nothing speaks against it. A library
// that was cut short would not be refused by the system but end the process when its missing pages are read.
std::string FindLibraryFault(const std::filesystem::path& file);

}  // namespace margindesk
