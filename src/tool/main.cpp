#include <cstdio>
#include <cstring>

int main(int argc, char** argv) {
    if (argc < 2 || std::strcmp(argv[1], "--help") == 0) {
        std::puts("usage: nutrovex-tool COMMAND ...");
        return argc < 2 ? 2 : 0;
    }
    std::fprintf(stderr, "nutrovex-tool: unknown command '%s'\n", argv[1]);
    return 2;
}
