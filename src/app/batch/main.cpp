#include "app/batch/batch.h"

int main(int argc, char** argv) { return sondrix::RunBatch(argc, argv); }
