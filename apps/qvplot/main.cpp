// qvplot: draws columns of CSV files as a graph, into a PNG file or a window.
#include "qvplot/command.h"

int main(int argc, char** argv) {
    return qv::plot::run(argc, argv);
}
