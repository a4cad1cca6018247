// describe PAGE_TEMPLATE FOLDER
//
// Writes into the folder what is generated from the catalogue: modelDescription.xml, index.html, variables.md and
// states.md.

#include "packaging/describe.h"

#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <sstream>
#include <stdexcept>

namespace {

std::string read_file(const std::filesystem::path& path) {
  std::ifstream file(path, std::ios::binary);
  std::ostringstream text;
  text << file.rdbuf();
  if (!file || !text) throw std::runtime_error("cannot read \"" + path.string() + "\"");
  return text.str();
}

void write_file(const std::filesystem::path& path, const std::string& text) {
  std::ofstream file(path, std::ios::binary);
  file << text;
  file.close();
  if (!file) throw std::runtime_error("cannot write \"" + path.string() + "\"");
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::cerr << "usage: describe PAGE_TEMPLATE FOLDER\n";
    return 2;
  }
  try {
    const std::filesystem::path folder = argv[2];
    std::filesystem::create_directories(folder);
    write_file(folder / "modelDescription.xml", model_description());
    write_file(folder / "index.html", index_page(read_file(argv[1])));
    write_file(folder / "variables.md", variables_document());
    write_file(folder / "states.md", states_document());
  } catch (const std::exception& error) {
    std::cerr << "describe: error: " << error.what() << '\n';
    return 1;
  }
  return 0;
}
