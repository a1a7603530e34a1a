#include "ui/CZuApp.h"

int main(int argc, char** argv) {
    return zu::RunZu({argv, argv + argc});
}
