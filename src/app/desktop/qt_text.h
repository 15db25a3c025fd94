#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace sondrix {

// Between the UTF-8 of the logic and the toolkit's texts.
inline QString QtText(std::string_view text) {
  return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

inline std::string Utf8Of(const QString& text) {
  const QByteArray bytes = text.toUtf8();
  return std::string(bytes.constData(), static_cast<std::size_t>(bytes.size()));
}

}  // namespace sondrix
