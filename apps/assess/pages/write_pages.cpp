// write_pages FRAME FOLDER writes the manual and the completions into a folder.

#include "pages.hpp"

#include <vorm/evaluation/text/file_text.hpp>

#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

int main(int argc, char** argv) {
    using vorm::evaluation::writeFile;
    try {
        if (argc != 3) {
            throw std::invalid_argument("usage: write_pages FRAME FOLDER");
        }
        const std::string folder = argv[2];
        const auto& options = assess::optionTable();
        writeFile(folder + "/assess.1",
                  assess::manualPage(vorm::evaluation::readFile(argv[1]), options));
        writeFile(folder + "/assess.bash", assess::bashCompletion(options));
        writeFile(folder + "/_assess", assess::zshCompletion(options));
        return 0;
    } catch (const std::exception& error) {
        std::cerr << "write_pages: " << error.what() << "\n";
        return 1;
    }
}
