#include "app/batch/end_picture.h"

#include "app/session.h"
#include "core/run_result.h"
#include "jobs/job_table.h"

namespace sondrix {

void SaveEndPicture(Session& session, std::string_view source, RunResult& result) {
  const bool hasFailed = result.end == RunEnd::Failed || result.end == RunEnd::Refused;
  const bool isDrawn = session.settings.MakeGraf && session.state.KnownSamples != 0;
  if (!JobOf(source).hasPictures || hasFailed || !isDrawn) return;
  const std::string path =
      result.target + SuffixOf(EndPictureSuffix, ChannelByte(session.state.SelectedChannel));
  bool isWhole = false;
  try {
    SaveGraph(session.pictures, session.outputs, path);
    isWhole = true;
  } catch (...) {
    result.lost.emplace_back(static_cast<FaultNumber>(CaughtFault().Number()), path);
  }
  result.outputs.push_back({path, isWhole});
}

}  // namespace sondrix
