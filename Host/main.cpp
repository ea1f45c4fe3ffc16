#include "Host/Command.hpp"

int main(int argc, char** argv) { return qrv::host::runMain(argc, argv); }
