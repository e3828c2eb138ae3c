#include "base/Result.h"

#include <system_error>

namespace kavendra {

std::unexpected<Error> systemFailure(std::string_view path, int errorNumber) {
    return std::unexpected(Error{std::string(path) + ": " + std::generic_category().message(errorNumber)});
}

} // namespace kavendra
