// What the twin imitates, done by the real library and processor: reads lines "sort KEY..." and "mean CELL..."
// and prints the order of the indices that std::sort leaves, or the extended-precision mean as a hex double.
#include <algorithm>
#include <cstdio>
#include <iostream>
#include <sstream>
#include <string>
#include <vector>

namespace {

struct Item {
    double key;
    int index;
};

std::vector<double> restOf(std::istringstream& line) {
    std::vector<double> values;
    for (double value = 0; line >> value;) values.push_back(value);
    return values;
}

void printOrder(const std::vector<double>& keys) {
    std::vector<Item> items;
    for (double key : keys) items.push_back({key, static_cast<int>(items.size())});
    std::sort(items.begin(), items.end(), [](const Item& a, const Item& b) { return a.key < b.key; });
    for (const Item& item : items) std::printf("%d ", item.index);
    std::printf("\n");
}

void printMean(const std::vector<double>& cells) {
    long double sum = 0;
    for (double cell : cells) sum += cell;
    std::printf("%a\n", static_cast<double>(sum / static_cast<long double>(cells.size())));
}

}  // namespace

int main() {
    for (std::string text; std::getline(std::cin, text);) {
        std::istringstream line(text);
        std::string what;
        line >> what;
        if (what == "sort") printOrder(restOf(line));
        if (what == "mean") printMean(restOf(line));
    }
}
