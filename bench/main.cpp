#include "bench/MemoryBenchmark.h"

#include <QApplication>

#include <benchmark/benchmark.h>

#include <string_view>

int main(int argc, char** argv) {
    if (argc == 3 && std::string_view(argv[1]) == kavendra::measureMemoryArgument)
        return kavendra::measureMemoryOf(argv[2]);
    // A local object, so that it is destroyed before the static objects of Qt.
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
