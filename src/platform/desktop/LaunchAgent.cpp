#include "platform/desktop/LaunchAgent.h"

#include "platform/Files.h"
#include "platform/Paths.h"

namespace kavendra {

namespace {

std::string escapedForXML(const std::string& text) {
    std::string escaped;
    for (const char character : text)
        switch (character) {
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        default:
            escaped += character;
        }
    return escaped;
}

} // namespace

std::string launchAgentPath() {
    return joinedPath(homeDirectory(), "Library/LaunchAgents/kavendra.plist");
}

StartupRegistrationStatus launchAgentStatus(const std::string& agentPath, const std::string& executable) {
    if (!isExecutableFile(executable))
        return StartupRegistrationStatus::notFound;
    return exists(agentPath) ? StartupRegistrationStatus::enabled : StartupRegistrationStatus::notRegistered;
}

std::string launchAgent(const std::string& executable) {
    return R"(<?xml version="1.0" encoding="UTF-8"?>
<!DOCTYPE plist PUBLIC "-//Apple//DTD PLIST 1.0//EN" "http://www.apple.com/DTDs/PropertyList-1.0.dtd">
<plist version="1.0">
<dict>
	<key>Label</key>
	<string>kavendra</string>
	<key>ProgramArguments</key>
	<array>
		<string>)" +
           escapedForXML(executable) + R"(</string>
	</array>
	<key>RunAtLoad</key>
	<true/>
</dict>
</plist>
)";
}

} // namespace kavendra
