#include "pages/auth/auth_code_page.h"

namespace tarnlog {

AuthCode::AuthCode(PageParent& parent, PageHost& host) : Page(parent, host, "AuthCode") {}

}  // namespace tarnlog
