#include "Benchmarks/Probes/Probe.h"

#include <cstdio>
#include <cstdlib>

namespace benchmarks {

void fail(const char* sentence) {
    std::fprintf(stderr, "%s\n", sentence);
    std::exit(EXIT_FAILURE);
}

} // namespace benchmarks
