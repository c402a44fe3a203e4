// What the twin works out with whole numbers, done by the real processor: reads lines of cells and prints the mean of
// each, added up in extended precision, as a hex double.
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>

int main() {
    for (std::string text; std::getline(std::cin, text);) {
        std::istringstream line(text);
        long double sum = 0;
        int cells = 0;
        for (double cell = 0; line >> cell; ++cells) sum += cell;
        std::printf("%a\n", static_cast<double>(sum / static_cast<long double>(cells)));
    }
}
