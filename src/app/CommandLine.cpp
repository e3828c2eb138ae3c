#include "app/CommandLine.h"

#include <getopt.h>

#include <cstdio>
#include <string_view>

namespace kavendra {

namespace {

constexpr const char* usage = "Usage: kavendra [--help | --version]\n";

constexpr const char* help = "Shows the launch items of your data files and starts them.\n"
                             "If kavendra runs already, its window comes to the front.\n"
                             "\n"
                             "  -h, --help     show this help and exit\n"
                             "  -v, --version  show the version and exit\n";

} // namespace

std::optional<int> exitStatusOfCommandLine(int argc, char* argv[]) {
    constexpr int usageError = 2;
    if (argc == 3 && std::string_view(argv[1]) == "-session")
        return std::nullopt;
    const option options[] = {{"help", no_argument, nullptr, 'h'},
                              {"version", no_argument, nullptr, 'v'},
                              {nullptr, 0, nullptr, 0}};
    const int chosen = getopt_long(argc, argv, "hv", options, nullptr); // reports an unknown option itself
    if (chosen == 'h')
        std::printf("%s%s", usage, help);
    else if (chosen == 'v')
        std::printf("kavendra %s\n", KAVENDRA_VERSION);
    else if (chosen == -1 && optind == argc)
        return std::nullopt;
    else
        std::fputs(usage, stderr);
    return chosen == 'h' || chosen == 'v' ? 0 : usageError;
}

} // namespace kavendra
