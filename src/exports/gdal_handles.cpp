#include "exports/gdal_handles.h"

#include "core/date_time.h"

#include <cpl_conv.h>
#include <cstdlib>

namespace sondrix {

void GdalMessages::ThrowIfFailed() const {
  if (!first_.empty()) throw CantExport(first_);
}

void GdalMessages::Throw(const char* otherwise) const {
  ThrowIfFailed();
  throw CantExport(otherwise);
}

void CPL_STDCALL GdalMessages::Note(CPLErr kind, CPLErrorNum, const char* text) {
  auto* const messages = static_cast<GdalMessages*>(CPLGetErrorHandlerUserData());
  if (kind < CE_Failure || !messages->first_.empty()) return;
  messages->first_ = text;
  for (char& c : messages->first_) {
    if (c == '\n' || c == '\r') c = ' ';
  }
}

GdalOption::GdalOption(const char* name, const char* value) : name_(name) {
  CPLSetThreadLocalConfigOption(name, value);
}

GdalOption::~GdalOption() { CPLSetThreadLocalConfigOption(name_, nullptr); }

Reference ReferenceOf(const std::string& crs, const GdalMessages& messages) {
  Reference reference(OSRNewSpatialReference(nullptr));
  const int code = std::atoi(crs.c_str() + std::min(crs.size(), crs.find(':') + 1));
  if (!reference || OSRImportFromEPSG(reference.get(), code) != OGRERR_NONE) messages.Throw();
  OSRSetAxisMappingStrategy(reference.get(), OAMS_TRADITIONAL_GIS_ORDER);
  return reference;
}

int CPL_STDCALL GoOn(double, const char*, void* run) {
  const auto* const asked = static_cast<const ExportRun*>(run);
  return asked->isToEnd && asked->isToEnd() ? FALSE : TRUE;
}

std::string StampOf(double date) {
  std::string text;
  AppendStamp(text, DateOfUnix(static_cast<std::int64_t>(date)));
  return text;
}

}  // namespace sondrix
