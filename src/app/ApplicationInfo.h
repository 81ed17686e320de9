#pragma once

namespace TessaraWorks
{

// What the program says of itself. The build passes on the values that the executable's version
// block needs as well.

constexpr auto applicationName = ORVEX_CLEANER_NAME;
constexpr auto applicationVersion = ORVEX_CLEANER_VERSION;
constexpr auto companyName = ORVEX_CLEANER_COMPANY;
constexpr auto buildTag = "00ec07c";
constexpr auto supportEmailAddress = "support@tessaraworks.example";

} // namespace TessaraWorks
