#pragma once

#include <span>
#include <string>
#include <vector>

namespace sondrix {

struct OziLink;

// The file name of the map program's library: OziAPI.dll, or liboziapi.so.
std::string OziLibraryName();

// The folders in which the library is looked for: the program's own, then the machine's. Never the current
// one, where a recording from anywhere may bring a library along.
std::vector<std::string> OziLibraryFolders();

// Takes the calls of the link from the first library in the folders that can be loaded and has them all; it
// stays loaded as long as the link has its calls. False where there is none: the link stays as it was.
//
// The library's calls take degrees, altitudes and day counts as 64-bit floats, other numbers as 32-bit
// integers, texts as 8-bit characters up to a zero; on 32-bit Windows by stdcall, elsewhere as C does.
// A version text of an impossible length throws std::runtime_error.
bool LoadOziLibrary(OziLink& link, std::span<const std::string> folders);

}  // namespace sondrix
