#include "pages/rangeplot/range_plot_page.h"

namespace tarnlog {

CCN0CompareDlg::CCN0CompareDlg(PageParent& parent, PageHost& host)
    : Page(parent, host, "CCN0CompareDlg") {}

}  // namespace tarnlog
