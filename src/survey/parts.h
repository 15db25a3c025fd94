#pragma once

namespace sondrix {

struct Survey;

// Finds the trips that go on in another source and sets Trip::journey and part of all. A later part has a
// name that differs from that of the part before in numbers alone, stands in the same folder and is of the
// same kind, and begins within 100 m and a minute of where and when that one ended; where one of them has no
// times, within 30 m, and one number is greater by 1.
void JoinParts(Survey& survey);

}  // namespace sondrix
