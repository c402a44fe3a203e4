#pragma once

#include <cstdlib>
#include <iostream>
#include <sstream>
#include <string>

namespace varnolix::testing {

/// Text for the console input. A dialogue that misses an answer would read past the end for ever, so the test is
/// aborted after a number of such reads.
class LimitedInput : public std::stringbuf {
  public:
    explicit LimitedInput(const std::string& text) : std::stringbuf(text, std::ios::in) {}

  protected:
    int_type underflow() override {
        const int_type next = std::stringbuf::underflow();
        if (traits_type::eq_int_type(next, traits_type::eof()) && ++readsPastEnd_ > mostReadsPastEnd) {
            std::cerr << "The dialogue reads on after the last answer.\n";
            std::abort();
        }
        return next;
    }

  private:
    static constexpr int mostReadsPastEnd = 1000;
    int readsPastEnd_ = 0;
};

/// Replaces the console during its lifetime.
class Console {
  public:
    explicit Console(const std::string& input = "")
        : input_(input), oldInput_(std::cin.rdbuf(&input_)), oldOutput_(std::cout.rdbuf(output_.rdbuf())) {
        std::cin.clear();
    }
    ~Console() {
        std::cin.rdbuf(oldInput_);
        std::cout.rdbuf(oldOutput_);
        std::cin.clear();
    }
    Console(const Console&) = delete;
    Console& operator=(const Console&) = delete;

    std::string output() const { return output_.str(); }

  private:
    LimitedInput input_;
    std::ostringstream output_;
    std::streambuf* oldInput_;
    std::streambuf* oldOutput_;
};

}  // namespace varnolix::testing
