#pragma once

#include <filesystem>
#include <string>

#include "terminal/session/Terminal.h"

namespace margindesk {

// Where the user's book and configuration lie unless others are named: "margindesk/book.db" in
// $XDG_DATA_HOME or ~/.local/share, "margindesk/config.db" in $XDG_CONFIG_HOME or ~/.config. Throws TCliError
// when neither the variable nor a home directory is set.
std::filesystem::path GetDefaultBookFile(const TEnvironment& environment);
std::filesystem::path GetDefaultConfigFile(const TEnvironment& environment);

// The directory with the language files and the demo book: $MARGINDESK_RESOURCES where that is set, else
// beside the program where it was installed or built, else in the sources it was built from. Throws TCliError
// when there is none.
std::filesystem::path GetResourceDirectory(const TEnvironment& environment);

// The package to load: $MARGINDESK_PACKAGE where that is set, else beside the program where it was installed
// or built. Throws TCliError when there is none; a file that is named need not be there.
std::filesystem::path GetPackageFile(const TEnvironment& environment);

// The address of a file, as the file service fetches it. A relative name counts from the current directory.
std::string MakeFileAddress(const std::filesystem::path& file);

// Makes a directory and those above it where they are missing, for the user alone. Throws TCliError.
void MakePrivateDirectory(const std::filesystem::path& directory);

}  // namespace margindesk
