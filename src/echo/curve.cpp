#include "echo/curve.h"

#include "echo/views.h"

namespace sondrix {

void DropCurve(Pictures& pictures) {
  pictures.Curve.Waiting = false;
  pictures.Curve.Samples.clear();
  pictures.Curve.Lines.clear();
}

void AddLine(Pictures& pictures, float x1, float y1, float x2, float y2, Colour colour) {
  pictures.Curve.Lines.push_back({x1, y1, x2, y2, colour});
  pictures.Curve.Waiting = true;
  pictures.SMPL.Touch();
}

void ResizeViews(Pictures& pictures, int echoWidth, int smplWidth, int metrWidth, int height) {
  pictures.ECHO.Resize(echoWidth, height, Picture::Columns::Keep);
  pictures.SMPL.Resize(smplWidth, height);
  pictures.METR.Resize(metrWidth, height);
  const PendingCurve& curve = pictures.Curve;
  pictures.Curve.Waiting = !curve.Samples.empty() || !curve.Lines.empty();
}

void Refresh(Pictures& pictures) {
  PendingCurve& curve = pictures.Curve;
  if (!curve.Waiting) return;
  curve.Waiting = false;
  Picture& smpl = pictures.SMPL;
  smpl.ClearRaster();
  for (std::size_t row = curve.Samples.size(); row-- > 1;)
    smpl.DrawLine(curve.Samples[row - 1], static_cast<double>(row - 1), curve.Samples[row],
                  static_cast<double>(row), Blue);
  for (const PendingLine& line : curve.Lines) smpl.DrawLine(line.x1, line.y1, line.x2, line.y2, line.colour);
}

}  // namespace sondrix
