#include "ui/DisplayFailureReport.h"

#include <QStringList>

#include <unistd.h>

#include <cstdio>
#include <mutex>

namespace kavendra {

namespace {

std::mutex mutex;
QStringList messages; // those of Qt so far

void print(const QString& line) {
    std::fprintf(stderr, "%s\n", qPrintable(line));
}

void keepMessage(QtMsgType type, const QMessageLogContext&, const QString& message) {
    const std::scoped_lock lock(mutex);
    if (type != QtFatalMsg)
        return messages.append(message);
    // The first message has the reason; Qt's fatal one is a paragraph that suggests to reinstall.
    const QString& reason = messages.isEmpty() ? message : messages.constFirst();
    print("kavendra: no display can be reached: " + reason.simplified());
    _exit(1);
}

} // namespace

DisplayFailureReport::DisplayFailureReport() {
    qInstallMessageHandler(keepMessage);
}

DisplayFailureReport::~DisplayFailureReport() {
    qInstallMessageHandler(nullptr);
    const std::scoped_lock lock(mutex);
    for (const QString& message : std::exchange(messages, {}))
        print(message);
}

} // namespace kavendra
