#pragma once

#include "app/language.h"
#include "core/channel.h"

#include <string>
#include <string_view>
#include <vector>

namespace sondrix {

// What can be told of a source before a run.
struct SourceNotes {
  std::vector<std::string> lines;
  std::vector<Channel> missing;  // channels of which nothing was seen in it
};

// Of a path of the field; none for an empty one. Reads for some 30 ms at most. What can't be read is a line.
SourceNotes NotesOn(std::string_view path, LangId langId);

}  // namespace sondrix
