#pragma once

#include <vector>

#include "tools/conventions/SourceTree.h"

namespace margindesk {

// The resource keys ("Res_Account") and error codes ("DC10013001") in the string literals of `sources` that
// one of the `languages` (the contents of language files) lacks in its section [Resource] or [ErrorCode]. A
// key put together from parts, of which a literal holds the beginning only, is found too: nobody could check
// it.
std::vector<TFinding> CheckKeysAreTranslated(const std::vector<TSourceFile>& sources,
                                             const std::vector<TSourceFile>& languages);

// What is wrong with the language files by themselves: a line that is none of a comment, a section and a key
// with its text; a key twice in a section; a text that is not UTF-8; a key that another of the files has and
// this one has not.
std::vector<TFinding> CheckLanguagesAgree(const std::vector<TSourceFile>& languages);

}  // namespace margindesk
