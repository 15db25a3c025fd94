#pragma once

namespace sondrix {

struct ChartRun;
class Progress;

// What is done with the survey between reading and writing: every sounding gets its fate and its depth, and
// every trip its account. EndAsked where a signal asked for it.
void SettleSurvey(ChartRun& run, Progress& progress);

}  // namespace sondrix
