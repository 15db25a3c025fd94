#include "core/run_result.h"

#include "core/channel.h"
#include "core/look_plan.h"
#include "core/pause.h"
#include "core/run.h"
#include "core/run_limits.h"
#include "core/run_lock.h"
#include "core/run_state.h"
#include "core/settings.h"
#include "digest.h"
#include "fault_in.h"
#include "test_window.h"

#include <cerrno>
#include <new>
#include <stdexcept>
#include <tuple>

namespace sondrix {
namespace {

TEST(Fault, NumbersAreThoseOfTheirDescriptions) {
  std::string all;
  for (int number = 0; number < 400; ++number) {
    const Fault fault(static_cast<FaultNumber>(number));
    const std::string line = FaultLine(number % 2 ? "JobLog" : "JobCsv", fault);
    EXPECT_TRUE(line.ends_with(": " + std::to_string(number) + ": " + fault.what()));
    if (number == 0 || fault.Description() != DescriptionOf(FaultNumber(0)))
      all += FaultLine("GO", fault) + '\n';
  }
  EXPECT_TRUE(all.ends_with(" ! error GO: 76. Path not found\n ! error GO: 380. Invalid property value\n"));
  EXPECT_TRUE(HasDigest(all, 0x3CF95B3722025A81));
}

TEST(Fault, ComesFromTheErrorsOfTheSystem) {
  std::string text;
  for (const int error :
       {ENOENT, ENOTDIR, EISDIR, EEXIST, EACCES, EPERM, EROFS,        EBUSY,  ETXTBSY, ENOSPC, EFBIG, EMFILE,
        ENFILE, ENOMEM,  ENXIO,  ENODEV, EIO,    EINTR, ENAMETOOLONG, EINVAL, ELOOP,   EBADF,  EILSEQ})
    text += std::to_string(FaultIn([&] { throw std::system_error(error, std::generic_category()); })) + " ";
  EXPECT_EQ(text, "53 76 75 75 70 70 70 70 70 61 61 67 67 7 68 68 57 57 52 52 52 52 52 ");
  EXPECT_EQ(FaultIn([] { throw std::bad_alloc(); }), 7);
  EXPECT_EQ(FaultIn([] { throw std::length_error(""); }), 7);
}

TEST(RunResult, IsWellAfterAWantedEndWithWholeOutputs) {
  std::string ends;
  RunResult result;
  for (int end = 4; end >= 0; --end) {
    result.end = static_cast<RunEnd>(end);
    ends.append(NameOf(result.end)).append(result.IsWell() ? "+ " : "- ");
  }
  EXPECT_EQ(ends, "failed- ended early- stopped+ refused- finished+ ");
  result.outputs = {{"a", true}};
  EXPECT_TRUE(result.IsWell());
  result.outputs.push_back({"b"});
  EXPECT_FALSE(result.IsWell());
  const Fault lost(FaultNumber::DiskFull);
  result.outputs.clear();
  result.lost = {lost};
  EXPECT_FALSE(result.IsWell());
  EXPECT_EQ(LineOf(result, {}), "");
  result.fault = lost;
  result.place = "GO";
  EXPECT_EQ(LineOf(result, {}), " ! error GO: 61. Disk full");
  result.message = &Messages::MsgDone;
  Messages messages;
  messages.MsgDone = "done";
  EXPECT_EQ(LineOf(result, messages), "done");
}

TEST(Settings, TheTableHasTheFieldsAndTheirDefaults) {
  const Settings settings;
  std::string table;
  for (const Field& field : Fields()) {
    EXPECT_EQ(FieldText(settings, field), field.defaultText) << field.name;
    EXPECT_EQ(FindField(field.name), &field);
    table.append(field.name).append(" ").append(field.key).append(" ").append(field.defaultText);
    table += " " + std::to_string(static_cast<int>(field.kind)) + (field.isLocked ? " locked" : "") +
             (field.mayMiss ? " may miss\n" : "\n");
  }
  EXPECT_TRUE(HasDigest(table, 0x21718572DD1D153A));
  EXPECT_TRUE(settings.UseHead && !settings.UseUTM && !FindField("none"));
  EXPECT_EQ(std::pair(MinEhoSens, MaxEhoSens), std::pair(-100, 50));
  std::string channels;
  for (int number = -1; number < 12; ++number) {
    const std::optional<Channel> channel = ChannelOf(number);
    if (!channel) continue;
    channels += std::to_string(number) + std::string(RowOf(*channel).name);
    for (const bool flag : {IsCompared(*channel), Is3D(*channel), RowOf(*channel).isInTables})
      channels += flag ? '+' : '-';
  }
  EXPECT_EQ(channels, "0Primary+-+2Downscan+-+5Sidescan--+93D-+-");
}

TEST(RunLock, TakesWhatARunReadsAndNothingElse) {
  TestWindow window;
  SetRunLock(window, true);
  std::string locked;
  for (const auto& [control, enabled] : window.enabled) locked += enabled ? "" : control + " ";
  EXPECT_EQ(locked,
            "DefLvl DefSlp DepthDiff DepthMP DepthSm DistDiff DucerX DucerY HideCut MakeCut MaxDiff MaxGrad "
            "MaxProc MaxSide ScanCut ScanSkip Source TargetName TargetPath UseDcm UseHead UseRev UseTyp "
            "UseUTM UseXYZ btnSource btnTargetPath ");
  EXPECT_EQ(window.pumps, 1);
  SetRunLock(window, false);
  for (const auto& [control, enabled] : window.enabled) EXPECT_TRUE(enabled) << control;
}

// A run of this floor only: a pause uses its state, window and messages.
TEST(Pause, LastsUntilItEndsOrTheRunDoes) {
  std::string text;
  // At which pump the pause ends, the run is stopped, or the program is to end; 0 is from the start.
  for (const auto& [goOn, stop, end] : {std::tuple(0, 9, 9), {3, 9, 9}, {3, 2, 9}, {3, 9, 2}, {0, 0, 9}}) {
    Settings settings;
    RunLimits limits;
    RunState state;
    Messages messages;
    messages.MsgAborted = "stopped";
    TestWindow window;
    char never = 0;
    auto& pictures = reinterpret_cast<Pictures&>(never);
    auto& link = reinterpret_cast<OziLink&>(never);
    auto& outputs = reinterpret_cast<Outputs&>(never);
    sondrix::Run run{settings, limits, state, messages, pictures, link, outputs, window};
    window.onPump = [&, a = goOn, b = stop, c = end](int pump) {
      state.PauseFlag = pump < a;
      state.StopFlag = state.StopFlag || pump >= b;
      window.isToEnd = pump >= c;
    };
    window.onPump(0);
    EXPECT_EQ(limits.DucerDist + limits.DucerAngle, 0);  // a click sets them where there is a transducer
    text += MayGoOn(run, 7, &Messages::MsgAborted) ? "on " : "off ";
    text += std::to_string(window.waited) + window.att + (state.StopFlag ? "! " : " ");
    EXPECT_EQ(window.pumps * 7, window.waited);
    EXPECT_EQ(window.kind, state.StopFlag ? LineKind::Notice : LineKind::Progress);
  }
  EXPECT_EQ(text, "on 0 on 21 off 14stopped! off 14stopped! off 0stopped! ");
}

TEST(LookPlan, LooksAtTheEndThenEverCloser) {
  constexpr std::int64_t piece = LookPlan::PieceLength;
  std::string places;
  const auto visit = [&](const LookPlan& plan, std::int64_t seen, std::int64_t length) {
    plan.VisitPlaces(seen, length,
                     [&](std::int64_t place) { places += std::to_string(place / (piece / 64)) + " "; });
    places += "| ";
  };
  const LookPlan plan(std::chrono::hours(1));
  for (const auto& [seen, length] :
       {std::pair(0, 100), {8, 128}, {64, 256}, {128, 256}, {200, 256}, {300, 1000}})
    visit(plan, seen * piece / 64, length * piece / 64);
  EXPECT_TRUE(plan.MayStart() && plan.MayGoOn());
  const LookPlan none(std::chrono::hours(0));
  EXPECT_FALSE(none.MayStart() || none.MayGoOn());
  visit(none, 0, 1000 * piece);
  EXPECT_EQ(places, "36 | 64 | 192 128 | 192 | 200 | 936 500 750 | 63936 | ");
  EXPECT_EQ(piece, 131072);
  EXPECT_LT(plan.startEnd + std::chrono::minutes(39), plan.end);
}

}  // namespace
}  // namespace sondrix
