#pragma once

#include <QString>
#include <string>
#include <string_view>

namespace velk {

/// UTF-8 as the toolkit's text. A byte that is no valid UTF-8 shows as U+FFFD.
QString ToQt(std::string_view text);

/// The toolkit's text as UTF-8.
std::string FromQt(const QString& text);

}  // namespace velk
