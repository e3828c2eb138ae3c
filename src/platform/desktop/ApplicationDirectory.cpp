#include "platform/desktop/ApplicationDirectory.h"

#include "platform/Files.h"
#include "platform/Text.h"

namespace kavendra {

bool isApplicationDirectory(const std::string& path) {
    return lowercased(path).ends_with(".app") && isDirectory(path);
}

} // namespace kavendra
