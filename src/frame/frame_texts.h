// Fixed texts of the main dialog and its about box.
#pragma once

#include <string_view>

namespace tarnlog {

inline constexpr std::string_view kDialogTitle = "Tarnlog d240320_o20055";
inline constexpr std::string_view kVersionText = "Tarnlog Version 3.2";

inline constexpr std::string_view kAboutMenuItem = "&About Tarnlog...";
inline constexpr int kAboutCommand = 16;
inline constexpr std::string_view kAboutCaption = "About Tarnlog";
inline constexpr std::string_view kGoToDocumentButton = "GoToDocument";
// The tool's page on the laboratory's internal wiki; the host is the lab's.
inline constexpr std::string_view kDocumentPath = "/kestrixwiki/index.php/Tool_Document";
inline constexpr std::string_view kBrowserFailedMessage =
    "IE Address Error, you need to copy the link to your browser to get document";

}  // namespace tarnlog
