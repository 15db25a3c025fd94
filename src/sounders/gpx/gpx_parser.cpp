#include "sounders/gpx/gpx_points.h"

#include <algorithm>
#include <expat.h>
#include <new>

namespace sondrix {

namespace {

// Memory that a source may claim: elements within each other, and one tag or comment.
constexpr std::size_t MostLevels = 256;
constexpr std::int64_t MostPending = 4 * 1024 * 1024;  // bytes
constexpr std::string_view Resumption = "<gpx><trk><trkseg>";

XML_Parser ParserOf(void* parser) { return static_cast<XML_Parser>(parser); }
GpxParser& OwnerOf(void* user) { return *static_cast<GpxParser*>(user); }

void OnOpen(void* user, const XML_Char* name, const XML_Char** attributes) {
  OwnerOf(user).Open(name, attributes);
}
void OnClose(void* user, const XML_Char* name) { OwnerOf(user).Close(name); }
void OnText(void* user, const XML_Char* text, int length) {
  OwnerOf(user).Text({text, static_cast<std::size_t>(length)});
}
// Comments and the like.
void OnOther(void* user, const XML_Char*, int) { OwnerOf(user).Note(); }
// They grow without bounds, and nobody who writes tracks needs one.
void OnEntity(void* user, const XML_Char*, int, const XML_Char*, int, const XML_Char*, const XML_Char*,
              const XML_Char*, const XML_Char*) {
  OwnerOf(user).Stop("it declares entities");
}

}  // namespace

void GpxParserCloser::operator()(void* parser) const { XML_ParserFree(ParserOf(parser)); }

// In the middle of a source its encoding is told no more. What is of use is ASCII, and any bytes may stand
// beside it.
GpxParser::GpxParser(GpxPoints& points, bool isResumed)
    : points_(points), parser_(XML_ParserCreate(isResumed ? "ISO-8859-1" : nullptr)) {
  if (!parser_) throw std::bad_alloc();
  XML_Parser parser = ParserOf(parser_.get());
  XML_SetUserData(parser, this);
  XML_SetElementHandler(parser, OnOpen, OnClose);
  XML_SetCharacterDataHandler(parser, OnText);
  XML_SetDefaultHandler(parser, OnOther);
  XML_SetEntityDeclHandler(parser, OnEntity);
  if (!isResumed) return;
  before_ = static_cast<std::int64_t>(Resumption.size());
  XML_Parse(parser, Resumption.data(), static_cast<int>(Resumption.size()), XML_FALSE);
}

void GpxParser::Note() {
  noted_ = static_cast<std::int64_t>(XML_GetCurrentByteIndex(ParserOf(parser_.get()))) - before_;
}

// No exception may pass through the parser, which is written in C.
void GpxParser::Open(const char* name, const char* const* attributes) {
  Note();
  if (++level_ > MostLevels) return Stop("elements within elements without end");
  points_.Open(name, attributes);
}

void GpxParser::Text(std::string_view text) {
  Note();
  try {
    points_.Text(text);
  } catch (...) {
    thrown_ = std::current_exception();
    Stop("");
  }
}

void GpxParser::Close(const char* name) {
  Note();
  --level_;
  try {
    points_.Close(name);
  } catch (...) {
    thrown_ = std::current_exception();
    Stop("");
  }
}

void GpxParser::Stop(const char* reason) {
  if (reason_ == nullptr) reason_ = reason;
  XML_StopParser(ParserOf(parser_.get()), XML_FALSE);
}

std::optional<GpxDamage> GpxParser::Parse(std::string_view bytes, bool isLast) {
  XML_Parser parser = ParserOf(parser_.get());
  const XML_Status status =
      XML_Parse(parser, bytes.data(), static_cast<int>(bytes.size()), isLast ? XML_TRUE : XML_FALSE);
  if (thrown_) std::rethrow_exception(thrown_);
  given_ += static_cast<std::int64_t>(bytes.size());
  if (status != XML_STATUS_OK) return Damage();
  if (isLast || given_ - noted_ < MostPending) return std::nullopt;
  return GpxDamage{.text = "a tag or comment without end",
                   .line = static_cast<std::uint64_t>(XML_GetCurrentLineNumber(parser)),
                   .offset = std::max<std::int64_t>(0, noted_)};
}

GpxDamage GpxParser::Damage() const {
  XML_Parser parser = ParserOf(parser_.get());
  const XML_Error error = XML_GetErrorCode(parser);
  GpxDamage damage;
  damage.text = reason_ != nullptr ? reason_ : XML_ErrorString(error);
  damage.line = static_cast<std::uint64_t>(XML_GetCurrentLineNumber(parser));
  damage.offset =
      std::max<std::int64_t>(0, static_cast<std::int64_t>(XML_GetCurrentByteIndex(parser)) - before_);
  damage.isAtEnd =
      reason_ == nullptr && (error == XML_ERROR_NO_ELEMENTS || error == XML_ERROR_UNCLOSED_TOKEN ||
                             error == XML_ERROR_PARTIAL_CHAR || error == XML_ERROR_UNCLOSED_CDATA_SECTION);
  damage.isStructure = error == XML_ERROR_TAG_MISMATCH || error == XML_ERROR_JUNK_AFTER_DOC_ELEMENT;
  return damage;
}

}  // namespace sondrix
