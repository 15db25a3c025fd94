#pragma once

#include "core/channel.h"
#include "echo/picture.h"

#include <cstdint>
#include <span>
#include <string_view>

namespace sondrix {

struct Messages;
class Outputs;
class Window;

enum class Side3D { Left, Right };

// Empties ECHO, SMPL and METR at the start of a run, and the needles CRS and HED.
void ClearViews(Pictures& pictures);
void ClearNeedles(Pictures& pictures);

// Sets the scales of ECHO, SMPL and METR for the run; on a 3D channel the fixed 3D layout.
void PrepareViews(Pictures& pictures, Channel selectedChannel, std::int16_t sampleCount);

// The scale by which a frame is shown, from the depth of its last sample, both in metres: one above 150 is
// taken for 15, but on a 3D channel.
float ShownScale(Channel selectedChannel, float scaleM);

// Takes a frame over: its column of the echogram, its curve, and the depth scale where it changed; scaleM is
// its ShownScale. On a 3D channel waits defectPause milliseconds and leaves column and curve to Draw3DEntry.
// Fault 6 for a scale so small that a metre has more than 32767 samples.
void ShowFrame(Pictures& pictures, Channel selectedChannel, std::span<const std::uint8_t> samples,
               float scaleM, float depthM, int ehoSens, int defectPause, Window& window);

// The colour of a sample: dark for a strong echo, lighter with a positive ehoSens; white for silence.
Colour EchoGrey(std::uint8_t sample, int ehoSens);

// Own depth in red and recorded depth in blue, across SMPL and as dots of the newest column of ECHO. Rows are
// indices of samples.
void MarkDepths(Pictures& pictures, std::int16_t ownRow, std::int32_t sounderRow);
// Metres.
void PrintDelta(Pictures& pictures, float depthDelta);
// The two depths, metres, beside their lines; the own depth on channels that are compared.
void PrintDepths(Pictures& pictures, std::int16_t ownRow, std::int32_t sounderRow, float ownDepth,
                 float depthM, Channel channel);

// A needle from the middle of a picture; angle in radians clockwise from north. Fault 6 if it isn't finite.
void DrawNeedle(Picture& picture, float angle, Colour colour);

// Entry index (from 0) of a side of a 3D frame; its depth and that of the entry before in units of SMPL.
void Draw3DEntry(Pictures& pictures, Side3D side, int index, std::uint8_t depthPx, std::uint8_t lastPx,
                 int ehoSens);
// Ends a side of count entries, the last of them at depth lastPx.
void Close3DSide(Pictures& pictures, Side3D side, int count, std::uint8_t lastPx);

// The sketch of the boat with antenna and transducer: metres to the right of the antenna, and ahead of it.
void DrawMounting(Pictures& pictures, float ducerXM, float ducerYM, const Messages& messages);

// Other device sizes of the three panels, which keep common rows. The echogram keeps its columns, curve and
// scale are stretched; the sketch of the mounting has to be drawn again.
void ResizeViews(Pictures& pictures, int echoWidth, int smplWidth, int metrWidth, int height);

// Brings the raster of SMPL up to the last frame. Whoever is about to look at SMPL calls this; cheap when
// nothing has changed.
void Refresh(Pictures& pictures);

// Brings BMP up to ECHO, SMPL and METR as they stand side by side, texts included.
void ComposeGraph(Pictures& pictures);

// Writes ECHO, SMPL and METR as they stand to a 24-bit Windows BMP file. Faults as of the operating system.
void SaveGraph(Pictures& pictures, Outputs& outputs, std::string_view path);

}  // namespace sondrix
