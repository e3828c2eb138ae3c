// Preloaded into a program by tools/soak. Writes the size of the program's allocated heap blocks, in bytes,
// to the file that HEAP_FILE names, once a second. Unlike the memory of the process, this does not depend on
// how the allocator fills its pages.

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <thread>

namespace {

void writeHeapSize(int file) {
    char text[24];
    const struct mallinfo2 heap = mallinfo2();
    const int length = std::snprintf(text, sizeof text, "%20zu\n", heap.uordblks + heap.hblkhd);
    if (pwrite(file, text, static_cast<std::size_t>(length), 0) != length)
        std::abort();
}

[[gnu::constructor]] void startProbe() {
    unsetenv("LD_PRELOAD"); // the programs that this one starts are not measured
    const char* path = std::getenv("HEAP_FILE");
    const int file = path ? open(path, O_WRONLY | O_CREAT | O_CLOEXEC, 0600) : -1;
    if (file < 0)
        std::abort();
    // The new thread must not receive the program's signals.
    sigset_t all;
    sigset_t previous;
    sigfillset(&all);
    pthread_sigmask(SIG_SETMASK, &all, &previous);
    std::thread([file] {
        for (;; sleep(1))
            writeHeapSize(file);
    }).detach();
    pthread_sigmask(SIG_SETMASK, &previous, nullptr);
}

} // namespace
