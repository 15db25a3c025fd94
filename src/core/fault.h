#pragma once

#include <exception>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>

namespace sondrix {

// The numbers under which run-time faults are reported.
enum class FaultNumber : int {
  InvalidCall = 5,
  Overflow = 6,
  OutOfMemory = 7,
  Subscript = 9,
  DivisionByZero = 11,
  TypeMismatch = 13,
  BadFileName = 52,
  FileNotFound = 53,
  FileAlreadyOpen = 55,
  DeviceIo = 57,
  DiskFull = 61,
  PastEnd = 62,
  TooManyFiles = 67,
  DeviceUnavailable = 68,
  PermissionDenied = 70,
  PathAccess = 75,
  PathNotFound = 76,
  InvalidProperty = 380,
};

// The plain English description of a fault number.
std::string_view DescriptionOf(FaultNumber number);

// A run-time fault: ends the running event or job at its handler, which reports number and description.
class Fault : public std::exception {
 public:
  // path: of the file that it was met at, where there is one.
  explicit Fault(FaultNumber number, std::string path = {}) : number_(number), path_(std::move(path)) {}
  int Number() const { return static_cast<int>(number_); }
  std::string_view Description() const { return DescriptionOf(number_); }
  const std::string& Path() const { return path_; }
  const char* what() const noexcept override;

 private:
  FaultNumber number_;
  std::string path_;
};

// The fault that an error of the operating system counts as; an unknown one is a device error.
FaultNumber FaultOfError(std::error_code error);

// Inside a catch block: the fault being handled, where exhausted memory and errors of the file system count
// as the faults that they map to. Rethrows what is none of these.
Fault CaughtFault();

// " ! error " + place + ": " + number + ". " + description, the line that every handler shows. With the
// places "JobCsv" and "JobLog" the number is followed by ": ".
std::string FaultLine(std::string_view place, const Fault& fault);

}  // namespace sondrix
