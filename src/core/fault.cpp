#include "core/fault.h"

#include "platform/file_system.h"

#include <new>
#include <stdexcept>

namespace sondrix {

namespace {

struct DescriptionRow {
  FaultNumber number;
  const char* text;
};

constexpr DescriptionRow Descriptions[] = {
    {FaultNumber::InvalidCall, "Invalid procedure call or argument"},
    {FaultNumber::Overflow, "Overflow"},
    {FaultNumber::OutOfMemory, "Out of memory"},
    {FaultNumber::Subscript, "Subscript out of range"},
    {FaultNumber::DivisionByZero, "Division by zero"},
    {FaultNumber::TypeMismatch, "Type mismatch"},
    {FaultNumber::BadFileName, "Bad file name or number"},
    {FaultNumber::FileNotFound, "File not found"},
    {FaultNumber::FileAlreadyOpen, "File already open"},
    {FaultNumber::DeviceIo, "Device I/O error"},
    {FaultNumber::DiskFull, "Disk full"},
    {FaultNumber::PastEnd, "Input past end of file"},
    {FaultNumber::TooManyFiles, "Too many files"},
    {FaultNumber::DeviceUnavailable, "Device unavailable"},
    {FaultNumber::PermissionDenied, "Permission denied"},
    {FaultNumber::PathAccess, "Path/File access error"},
    {FaultNumber::PathNotFound, "Path not found"},
    {FaultNumber::InvalidProperty, "Invalid property value"},
};

struct ErrorRow {
  std::errc error;
  FaultNumber number;
};

constexpr ErrorRow Errors[] = {
    {std::errc::no_such_file_or_directory, FaultNumber::FileNotFound},
    {std::errc::not_a_directory, FaultNumber::PathNotFound},
    {std::errc::is_a_directory, FaultNumber::PathAccess},
    {std::errc::file_exists, FaultNumber::PathAccess},
    {std::errc::permission_denied, FaultNumber::PermissionDenied},
    {std::errc::operation_not_permitted, FaultNumber::PermissionDenied},
    {std::errc::read_only_file_system, FaultNumber::PermissionDenied},
    {std::errc::device_or_resource_busy, FaultNumber::PermissionDenied},
    {std::errc::text_file_busy, FaultNumber::PermissionDenied},
    {std::errc::no_space_on_device, FaultNumber::DiskFull},
    {std::errc::file_too_large, FaultNumber::DiskFull},
    {std::errc::too_many_files_open, FaultNumber::TooManyFiles},
    {std::errc::too_many_files_open_in_system, FaultNumber::TooManyFiles},
    {std::errc::not_enough_memory, FaultNumber::OutOfMemory},
    {std::errc::filename_too_long, FaultNumber::BadFileName},
    {std::errc::invalid_argument, FaultNumber::BadFileName},
    {std::errc::too_many_symbolic_link_levels, FaultNumber::BadFileName},
    {std::errc::bad_file_descriptor, FaultNumber::BadFileName},
    {std::errc::illegal_byte_sequence, FaultNumber::BadFileName},
    {std::errc::no_such_device_or_address, FaultNumber::DeviceUnavailable},
    {std::errc::no_such_device, FaultNumber::DeviceUnavailable},
};

}  // namespace

std::string_view DescriptionOf(FaultNumber number) {
  for (const DescriptionRow& row : Descriptions) {
    if (row.number == number) return row.text;
  }
  return "Application-defined or object-defined error";
}

// The descriptions are literals, so their views end in a zero.
const char* Fault::what() const noexcept { return Description().data(); }

FaultNumber FaultOfError(std::error_code error) {
  for (const ErrorRow& row : Errors) {
    if (error == row.error) return row.number;
  }
  return IsQuotaUsedUp(error) ? FaultNumber::DiskFull : FaultNumber::DeviceIo;
}

Fault CaughtFault() {
  try {
    throw;
  } catch (const Fault& fault) {
    return fault;
  } catch (const std::bad_alloc&) {
    return Fault(FaultNumber::OutOfMemory);
  } catch (const std::length_error&) {
    return Fault(FaultNumber::OutOfMemory);
  } catch (const std::system_error& error) {
    return Fault(FaultOfError(error.code()));
  }
}

// The jobs of tables and logs part number and description by a colon.
std::string FaultLine(std::string_view place, const Fault& fault) {
  const bool hasColon = place == "JobCsv" || place == "JobLog";
  std::string line = " ! error ";
  line += place;
  line += ": " + std::to_string(fault.Number()) + (hasColon ? ": " : ". ");
  line += fault.Description();
  return line;
}

}  // namespace sondrix
