#include "platform/desktop/LaunchAgent.h"

#include "platform/Files.h"
#include "platform/Paths.h"

#include <QString>

namespace kavendra {

std::string launchAgentPath() {
    return joinedPath(homeDirectory(), "Library/LaunchAgents/" KAVENDRA_APPLICATION_ID ".plist");
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
	<string>)" KAVENDRA_APPLICATION_ID R"(</string>
	<key>ProgramArguments</key>
	<array>
		<string>)" +
           QString::fromStdString(executable).toHtmlEscaped().toStdString() + R"(</string>
	</array>
	<key>RunAtLoad</key>
	<true/>
</dict>
</plist>
)";
}

} // namespace kavendra
