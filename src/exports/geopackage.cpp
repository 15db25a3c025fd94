#include "exports/geopackage.h"

#include "core/date_time.h"
#include "core/files.h"

#include <array>
#include <chrono>
#include <cmath>
#include <condition_variable>
#include <cpl_conv.h>
#include <cpl_error.h>
#include <gdal.h>
#include <iterator>
#include <memory>
#include <mutex>
#include <ogr_api.h>
#include <ogr_srs_api.h>
#include <stop_token>
#include <string_view>
#include <thread>

namespace sondrix {
namespace {

// Collects the first failure while it lives, and keeps GDAL from printing.
class GdalMessages {
 public:
  GdalMessages() { CPLPushErrorHandlerEx(Note, this); }
  ~GdalMessages() { CPLPopErrorHandler(); }
  GdalMessages(const GdalMessages&) = delete;
  GdalMessages& operator=(const GdalMessages&) = delete;

  void ThrowIfFailed() const {
    if (!first_.empty()) throw CantExport(first_);
  }
  [[noreturn]] void Throw() const {
    ThrowIfFailed();
    throw CantExport("GDAL can't write it");
  }

 private:
  static void CPL_STDCALL Note(CPLErr kind, CPLErrorNum, const char* text) {
    auto* const messages = static_cast<GdalMessages*>(CPLGetErrorHandlerUserData());
    if (kind < CE_Failure || !messages->first_.empty()) return;
    messages->first_ = text;
    for (char& c : messages->first_) {
      if (c == '\n' || c == '\r') c = ' ';
    }
  }

  std::string first_;
};

// A setting of GDAL while it lives.
class GdalOption {
 public:
  GdalOption(const char* name, const char* value) : name_(name) {
    CPLSetThreadLocalConfigOption(name, value);
  }
  ~GdalOption() { CPLSetThreadLocalConfigOption(name_, nullptr); }
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

struct Column {
  const char* name;
  OGRFieldType type;
};
enum { Latitude, Longitude, Depth, Time, TripName, Recorded, FateName };
constexpr Column SoundingColumns[] = {
    {"latitude", OFTReal}, {"longitude", OFTReal}, {"depth", OFTReal},  {"time", OFTReal},
    {"trip", OFTString},   {"recorded", OFTReal},  {"fate", OFTString},
};
constexpr Column TrackColumns[] = {{"trip", OFTString}};

std::string DateText(double date) {
  std::string text;
  AppendStamp(text, DateOfUnix(static_cast<std::int64_t>(date)));
  return text + ".000Z";
}

// The 64-bit float nearest to the millimetre that a 32-bit one holds.
double Millimetres(float metres) { return std::round(static_cast<double>(metres) * 1000) / 1000; }

// While it lives, a statement of the data set fails when the run is to end: one of SQL takes seconds.
class SqlWatch {
 public:
  SqlWatch(GDALDatasetH dataset, const ExportRun& run)
      : thread_([this, dataset, &run](const std::stop_token& stop) {
          constexpr std::chrono::milliseconds pause(50);
          std::unique_lock lock(mutex_);
          while (!isStopped_.wait_for(lock, stop, pause, [&stop] { return stop.stop_requested(); })) {
            if (run.isToEnd && run.isToEnd()) GDALDatasetAbortSQL(dataset);
          }
        }) {}

 private:
  std::mutex mutex_;
  std::condition_variable_any isStopped_;
  std::jthread thread_;
};

class Geopackage {
 public:
  Geopackage(const std::string& path, const GdalMessages& messages) : messages_(messages) {
    GDALAllRegister();
    const GDALDriverH driver = GDALGetDriverByName("GPKG");
    if (driver == nullptr) throw CantExport("this GDAL has no GeoPackage");
    dataset_.reset(GDALCreate(driver, path.c_str(), 0, 0, 0, GDT_Unknown, nullptr));
    reference_.reset(OSRNewSpatialReference(nullptr));
    constexpr int wgs84 = 4326;
    if (!dataset_ || OSRImportFromEPSG(reference_.get(), wgs84) != OGRERR_NONE) messages_.Throw();
    OSRSetAxisMappingStrategy(reference_.get(), OAMS_TRADITIONAL_GIS_ORDER);
    if (GDALDatasetStartTransaction(dataset_.get(), 0) != OGRERR_NONE) messages_.Throw();
  }

  // Its index of places is made by Close alone: GDAL would make it of a file that is given up too, which
  // takes longer than the features.
  OGRLayerH AddLayer(const char* name, OGRwkbGeometryType geometry, std::span<const Column> columns) {
    const char* const layerOptions[] = {"SPATIAL_INDEX=NO", nullptr};
    const OGRLayerH layer =
        GDALDatasetCreateLayer(dataset_.get(), name, reference_.get(), geometry, layerOptions);
    if (layer == nullptr) messages_.Throw();
    for (const Column& column : columns) {
      const OGRFieldDefnH field = OGR_Fld_Create(column.name, column.type);
      const OGRErr error = OGR_L_CreateField(layer, field, 1);
      OGR_Fld_Destroy(field);
      if (error != OGRERR_NONE) messages_.Throw();
    }
    return layer;
  }

  void Add(OGRLayerH layer, const Feature& feature) const {
    OGR_F_SetFID(feature.get(), OGRNullFID);
    if (OGR_L_CreateFeature(layer, feature.get()) != OGRERR_NONE) messages_.Throw();
  }

  // All is in the file.
  void Close(const ExportRun& run) {
    for (int i = 0; i < GDALDatasetGetLayerCount(dataset_.get()); ++i) {
      const OGRLayerH layer = GDALDatasetGetLayer(dataset_.get(), i);
      const std::string sql = std::string("SELECT CreateSpatialIndex('") + OGR_L_GetName(layer) + "', '" +
                              OGR_L_GetGeometryColumn(layer) + "')";
      // cppcheck-suppress unreadVariable ; it works as long as it lives
      const SqlWatch watch(dataset_.get(), run);
      const OGRLayerH result = GDALDatasetExecuteSQL(dataset_.get(), sql.c_str(), nullptr, nullptr);
      if (result != nullptr) GDALDatasetReleaseResultSet(dataset_.get(), result);
      run.EndIfAsked();
      messages_.ThrowIfFailed();
    }
    run.EndIfAsked();
    if (GDALDatasetCommitTransaction(dataset_.get()) != OGRERR_NONE) messages_.Throw();
    dataset_.reset();
    messages_.ThrowIfFailed();
  }

 private:
  const GdalMessages& messages_;
  Dataset dataset_;
  Reference reference_;
};

void SetNumber(OGRFeatureH feature, int column, double value) {
  if (std::isnan(value)) {
    OGR_F_SetFieldNull(feature, column);
  } else {
    OGR_F_SetFieldDouble(feature, column, value);
  }
}

void SetPoint(OGRFeatureH feature, const Sounding& sounding) {
  if (!sounding.HasPosition()) {
    OGR_F_SetGeometryDirectly(feature, nullptr);
    return;
  }
  OGRGeometryH point = OGR_F_GetGeometryRef(feature);
  if (point == nullptr) {
    OGR_F_SetGeometryDirectly(feature, OGR_G_CreateGeometry(wkbPoint));
    point = OGR_F_GetGeometryRef(feature);
  }
  OGR_G_SetPoint_2D(point, 0, sounding.longitude, sounding.latitude);
}

void AddSoundings(Geopackage& file, const Survey& survey, const ExportRun& run) {
  const OGRLayerH layer = file.AddLayer("soundings", wkbPoint, SoundingColumns);
  const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer)));
  std::array<std::string, FateCount> fates;
  for (std::size_t i = 0; i < fates.size(); ++i) fates[i] = NameOf(static_cast<Fate>(i));
  for (const Trip& trip : survey.trips) {
    OGR_F_SetFieldString(feature.get(), TripName, trip.name.c_str());
    for (std::size_t b = 0; b < trip.soundings.BlockCount(); ++b) {
      const std::span<const Sounding> block = trip.soundings.Block(b);
      for (const Sounding& sounding : block) {
        SetNumber(feature.get(), Latitude, sounding.latitude);
        SetNumber(feature.get(), Longitude, sounding.longitude);
        SetNumber(feature.get(), Depth, Millimetres(sounding.depth));
        SetNumber(feature.get(), Time, sounding.time);
        SetNumber(feature.get(), Recorded, Millimetres(sounding.recorded));
        OGR_F_SetFieldString(feature.get(), FateName, fates[static_cast<std::size_t>(sounding.fate)].c_str());
        SetPoint(feature.get(), sounding);
        file.Add(layer, feature);
      }
      run.EndIfAsked();
      run.Advance(block.size());
    }
  }
}

// The lines of a trip; one of a single place is none.
class TrackLines {
 public:
  TrackLines() : lines_(OGR_G_CreateGeometry(wkbMultiLineString)) {}
  TrackLines(const TrackLines&) = delete;
  TrackLines& operator=(const TrackLines&) = delete;
  ~TrackLines() { OGR_G_DestroyGeometry(lines_); }

  void AddPoint(const Sounding& sounding) {
    if (line_ == nullptr) line_ = OGR_G_CreateGeometry(wkbLineString);
    OGR_G_AddPoint_2D(line_, sounding.longitude, sounding.latitude);
  }
  void EndLine() {
    if (line_ == nullptr) return;
    if (OGR_G_GetPointCount(line_) > 1) {
      OGR_G_AddGeometryDirectly(lines_, line_);
    } else {
      OGR_G_DestroyGeometry(line_);
    }
    line_ = nullptr;
  }
  // For a feature, which copies it.
  OGRGeometryH Lines() const { return lines_; }
  bool AreNone() const { return OGR_G_GetGeometryCount(lines_) == 0; }

 private:
  OGRGeometryH lines_, line_ = nullptr;
};

void AddTracks(Geopackage& file, const Survey& survey, const ExportRun& run) {
  const OGRLayerH layer = file.AddLayer("tracks", wkbMultiLineString, TrackColumns);
  for (const Trip& trip : survey.trips) {
    run.EndIfAsked();
    TrackLines lines;
    for (std::size_t i = 0; i < trip.soundings.size(); ++i) {
      const Sounding& sounding = trip.soundings[i];
      if (sounding.beginsLine) lines.EndLine();
      if (sounding.fate == Fate::Used && sounding.HasPosition()) lines.AddPoint(sounding);
    }
    lines.EndLine();
    if (lines.AreNone()) continue;
    const Feature feature(OGR_F_Create(OGR_L_GetLayerDefn(layer)));
    OGR_F_SetFieldString(feature.get(), 0, trip.name.c_str());
    OGR_F_SetGeometry(feature.get(), lines.Lines());
    file.Add(layer, feature);
  }
}

}  // namespace

void WriteGeopackage(const Survey& survey, const ExportRun& run, double date, const std::string& path) {
  const GdalMessages messages;
  // The file has no earlier state to go back to, and no name of its own before it is whole.
  const GdalOption journal("OGR_SQLITE_JOURNAL", "OFF");
  const GdalOption synchronous("OGR_SQLITE_SYNCHRONOUS", "OFF");
  const std::string dateText = DateText(date);
  const GdalOption dated("OGR_CURRENT_DATE", dateText.c_str());
  Geopackage file(path, messages);
  AddSoundings(file, survey, run);
  AddTracks(file, survey, run);
  file.Close(run);
}

}  // namespace sondrix
