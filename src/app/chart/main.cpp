#include "app/chart/chart.h"
#include "app/chart/gis_library.h"
#include "platform/platform.h"

int main(int argc, char** argv) {
  sondrix::PrepareProcess();
  return sondrix::RunChart(sondrix::ProgramArguments(argc, argv), sondrix::GisFolders());
}
