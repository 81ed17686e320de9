#pragma once

namespace TessaraWorks
{

// The program's name, version and addresses. CMakeLists.txt sets them, and the build passes them on.

constexpr auto applicationName = ORVEX_CLEANER_NAME;
constexpr auto applicationVersion = ORVEX_CLEANER_VERSION;
constexpr auto companyName = ORVEX_CLEANER_COMPANY;
constexpr auto buildTag = ORVEX_CLEANER_BUILD_TAG;
constexpr auto supportEmailAddress = ORVEX_CLEANER_SUPPORT_ADDRESS;

} // namespace TessaraWorks
