#pragma once

#include <string_view>

namespace sondrix {

// Every message of the system under its key, UTF-8. Empty until a language is applied. A blank at the start
// or end of a text belongs to it: callers join the texts to numbers and names.
struct Messages {
  std::string_view MsgBegin, MsgNoSource, MsgTargetDenied, MsgBadConfig, FilterSource, TitleFolder;
  std::string_view MsgUnixNewlines, MsgPolyDone, MsgPolyNone, MsgNeedPolish, MsgFileBusy;
  std::string_view MsgNoDelimiter, MsgFilesDone, MsgAborted, MsgLogCorrupt;
  std::string_view HeadCsv, ReasonDistance, ReasonNoSats, ReasonSats, ReasonZeroDepth;
  std::string_view WordDot, WordLine, WordInLine, WordLines, WordFrom;
  std::string_view MsgBadInterval, MsgStopped, Msg3dInSl2, MsgEchoFolder, MsgDone, MsgLogError, MsgSkipScan;
  std::string_view WordOffset, WordScan, WordFish, WordKmh, MsgLoadMap, MsgOffMap, WordDucer;
  std::string_view MsgRunOzi, MsgCopyApi;
  // The question asked when the chosen channel doesn't appear in a recording. {0} is its name, {1} the index
  // of the scan, {2} the percentage of the file that lies before it.
  std::string_view AskNoChannel, TitleNoChannel;
  int DucerLabelShift = 0;  // logical units, in the sketch of the mounting
};

}  // namespace sondrix
