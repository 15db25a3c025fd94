#include "exports/export_run.h"

#include "core/files.h"

#include <algorithm>
#include <condition_variable>
#include <exception>
#include <mutex>
#include <thread>
#include <vector>

namespace sondrix {
namespace {

// The pieces that one thread formats before its text is written: small trips go out together.
struct Batch {
  std::size_t begin = 0, end = 0;  // of the pieces
};

std::vector<SurveyPiece> PiecesOf(const Survey& survey) {
  std::vector<SurveyPiece> pieces;
  for (std::size_t t = 0; t < survey.trips.size(); ++t) {
    const std::size_t blocks = survey.trips[t].soundings.BlockCount();
    for (std::size_t b = 0; b < blocks; ++b) pieces.push_back({t, b});
  }
  return pieces;
}

std::span<const Sounding> SoundingsOf(const Survey& survey, const SurveyPiece& piece) {
  return survey.trips[piece.trip].soundings.Block(piece.block);
}

}  // namespace

void ExportRun::EndIfAsked() const {
  if (isToEnd && isToEnd()) throw EndAsked();
}

void WritePieces(const Survey& survey, const ExportRun& run, const std::function<FormatPiece()>& makeFormat,
                 OutputFile& file) {
  const std::vector<SurveyPiece> pieces = PiecesOf(survey);
  std::mutex mutex;  // of what follows
  std::condition_variable isNext;
  std::size_t taken = 0, written = 0;  // pieces
  std::exception_ptr failure;

  const auto take = [&]() -> Batch {
    const std::lock_guard lock(mutex);
    if (failure) return {};
    const std::size_t begin = taken;
    for (std::size_t rows = 0; taken < pieces.size() && rows < SoundingList::BlockSize; ++taken) {
      rows += SoundingsOf(survey, pieces[taken]).size();
    }
    return {begin, taken};
  };
  const auto work = [&] {
    try {
      const FormatPiece format = makeFormat();
      RowText rows;
      for (Batch batch = take(); batch.begin < batch.end; batch = take()) {
        run.EndIfAsked();
        rows.Clear();
        std::size_t count = 0;
        for (std::size_t i = batch.begin; i < batch.end; ++i) {
          const std::span<const Sounding> soundings = SoundingsOf(survey, pieces[i]);
          format(pieces[i], soundings, rows);
          count += soundings.size();
        }
        std::unique_lock lock(mutex);
        isNext.wait(lock, [&] { return written == batch.begin || failure; });
        if (failure) return;
        file.Write(rows.Text());
        written = batch.end;
        isNext.notify_all();
        run.Advance(count);
      }
    } catch (...) {
      const std::lock_guard lock(mutex);
      if (!failure) failure = std::current_exception();
      isNext.notify_all();
    }
  };
  {
    const std::size_t workers =
        std::clamp<std::size_t>(pieces.size(), 1, static_cast<std::size_t>(run.threads));
    std::vector<std::jthread> threads;
    for (std::size_t i = 1; i < workers; ++i) threads.emplace_back(work);
    work();
  }
  if (failure) std::rethrow_exception(failure);
}

}  // namespace sondrix
