#include "platform/desktop/ParsedURL.h"

#include "platform/TextDecoding.h"

#include <QUrl>

namespace kavendra {

std::optional<ParsedURL> parseURL(std::string_view text) {
    if (!isValidUTF8(text) || text.find('\0') != std::string_view::npos)
        return std::nullopt;
    const QUrl url(QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size())), QUrl::TolerantMode);
    if (!url.isValid())
        return std::nullopt;
    return ParsedURL{.scheme = url.scheme().toStdString(),
                     .encoded = url.toEncoded(QUrl::FullyEncoded).toStdString()};
}

} // namespace kavendra
