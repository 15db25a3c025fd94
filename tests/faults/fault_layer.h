#pragma once

#include <string>

namespace sondrix {

// A layer under the file functions of this program: one call on a path below a folder fails on purpose.
struct FaultLayer {
  std::string folder;      // calls elsewhere are neither counted nor failed; empty for none at all
  int failAt = 0;          // the number of the call that fails, from 1
  int error = 0;           // errno of it
  bool shortened = false;  // only reads and writes count; the one that fails takes half of its bytes
  int calls = 0;           // so far
  std::string call, path;  // of the one that failed; empty before it
};

// The one of the process. It also stops the clock, so that two runs write the same.
FaultLayer& TheFaultLayer();

}  // namespace sondrix
