#include "app/batch/batch.h"
#include "platform/platform.h"

int main(int argc, char** argv) {
  sondrix::PrepareProcess();
  return sondrix::RunBatch(sondrix::ProgramArguments(argc, argv));
}
