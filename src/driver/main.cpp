#include "driver/run.h"

int main(int argc, char** argv) { return static_cast<int>(driver::run(argc, argv)); }
