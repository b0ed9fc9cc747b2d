// SPDX-License-Identifier: Apache-2.0
// SPDX-FileCopyrightText: the hzep platform authors
#include "Emit.h"
#include "Schema.h"

#include <filesystem>
#include <fstream>
#include <iostream>
#include <iterator>

namespace {

/// Writes a file only when its text changes, so that nothing that depends on it is built again.
void writeIfChanged(const std::filesystem::path& path, const std::string& text) {
    if (std::ifstream in(path, std::ios::binary); in) {
        if (std::string(std::istreambuf_iterator<char>(in), {}) == text) {
            return;
        }
    }
    std::ofstream out(path, std::ios::binary);
    out << text;
    out.close();
    if (!out) {
        throw std::runtime_error(path.string() + ": can't be written");
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: lmxgen SCHEMA.xsd OUTDIR\n";
        return 2;
    }
    try {
        const Family family = readSchema(argv[1]);
        const std::filesystem::path dir(argv[2]);
        writeIfChanged(dir / (family.name + "LMX.h"), emitHeader(family));
        writeIfChanged(dir / (family.name + "LMX.cpp"), emitSource(family));
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
        return 1;
    }
    return 0;
}
