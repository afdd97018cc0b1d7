#include "terminal/desktop/Desktop.h"

int main(int argc, char** argv) { return margindesk::RunDesktop(argc, argv); }
