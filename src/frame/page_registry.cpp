#include "frame/page_registry.h"

#include "frame/auto_page.h"
#include "pages/auth/auth_code_page.h"
#include "pages/continuity/record_time_page.h"
#include "pages/dynamic/dynamic_page.h"
#include "pages/heading/heading_page.h"
#include "pages/ins/pvt_process_page.h"
#include "pages/nmea/nema_page.h"
#include "pages/noise/noise_page.h"
#include "pages/rangeplot/range_plot_page.h"
#include "pages/simulator/simulator_page.h"
#include "pages/static/static_page.h"
#include "pages/timing/pps_reacquisition_page.h"

namespace tarnlog {
namespace {

template <typename PageClass>
std::unique_ptr<Page> Create(PageParent& parent, PageHost& host) {
  return std::make_unique<PageClass>(parent, host);
}

}  // namespace

const std::array<PageRegistration, kPageCount>& PageRegistry() {
  static const std::array<PageRegistration, kPageCount> registry{{
      {0, "Static", "llherroRTKStatic", Create<llherroRTKStatic>},
      {1, "Dynamic", "llherroRTKDynamic", Create<llherroRTKDynamic>},
      {2, "Noise", "GenNoise", Create<GenNoise>},
      {3, "Initial", "PPSReacquisition", Create<PPSReacquisition>},
      {4, "AuthCode", "AuthCode", Create<AuthCode>},
      {5, "Continue", "CRecordTimeDlg", Create<CRecordTimeDlg>},
      {6, "Nema", "Nema", Create<Nema>},
      {7, "Heading", "Heading", Create<Heading>},
      {8, "Simulator", "SimulatorProDlg", Create<SimulatorProDlg>},
      {9, "RangePlot", "CCN0CompareDlg", Create<CCN0CompareDlg>},
      {11, "AUTO", "CAuto", Create<CAuto>},
      {10, "INS", "PVTProcess", Create<PVTProcess>},
  }};
  return registry;
}

const PageRegistration* RegistrationAtTab(int tabIndex) {
  for (const PageRegistration& registration : PageRegistry()) {
    if (registration.tabIndex == tabIndex) return &registration;
  }
  return nullptr;
}

}  // namespace tarnlog
