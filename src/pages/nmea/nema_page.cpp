#include "pages/nmea/nema_page.h"

namespace tarnlog {

Nema::Nema(PageParent& parent, PageHost& host) : Page(parent, host, "Nema") {}

}  // namespace tarnlog
