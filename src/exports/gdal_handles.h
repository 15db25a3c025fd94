#pragma once

#include "exports/export_run.h"

#include <cpl_error.h>
#include <gdal.h>
#include <memory>
#include <ogr_api.h>
#include <ogr_srs_api.h>
#include <string>
#include <type_traits>

namespace sondrix {

// Collects the first failure of this thread while it lives, and keeps GDAL from printing.
class GdalMessages {
 public:
  GdalMessages() { CPLPushErrorHandlerEx(Note, this); }
  ~GdalMessages() { CPLPopErrorHandler(); }
  GdalMessages(const GdalMessages&) = delete;
  GdalMessages& operator=(const GdalMessages&) = delete;

  void ThrowIfFailed() const;
  // CantExport with what failed, or that it can't be done.
  [[noreturn]] void Throw(const char* otherwise = "GDAL can't write it") const;
  void Forget() { first_.clear(); }

 private:
  static void CPL_STDCALL Note(CPLErr kind, CPLErrorNum number, const char* text);

  std::string first_;
};

// A setting of GDAL for this thread while it lives.
class GdalOption {
 public:
  GdalOption(const char* name, const char* value);
  ~GdalOption();
  GdalOption(const GdalOption&) = delete;
  GdalOption& operator=(const GdalOption&) = delete;

 private:
  const char* name_;
};

struct DatasetEnd {
  void operator()(void* dataset) const { GDALClose(dataset); }
};
using Dataset = std::unique_ptr<void, DatasetEnd>;

struct ReferenceEnd {
  void operator()(void* reference) const { OSRRelease(reference); }
};
using Reference = std::unique_ptr<void, ReferenceEnd>;

struct FeatureEnd {
  void operator()(OGRFeatureH feature) const { OGR_F_Destroy(feature); }
};
using Feature = std::unique_ptr<std::remove_pointer_t<OGRFeatureH>, FeatureEnd>;

// Of "EPSG:n", x to the east before y. CantExport for an unknown one.
Reference ReferenceOf(const std::string& crs, const GdalMessages& messages);

// Asks the run whether it is to end, for the functions of GDAL that tell of their progress.
int CPL_STDCALL GoOn(double done, const char* message, void* run);

// "2021-05-15T07:29:02" of seconds since 1970 UTC.
std::string StampOf(double date);

}  // namespace sondrix
