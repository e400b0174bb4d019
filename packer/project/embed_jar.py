#!/usr/bin/env python3
"""Writes the verification class's jar as a C++ source. Usage: embed_jar.py JAR OUTPUT"""

import sys
from pathlib import Path

ROW = 24

data = Path(sys.argv[1]).read_bytes()
rows = (", ".join(map(str, data[i : i + ROW])) for i in range(0, len(data), ROW))
Path(sys.argv[2]).write_text(
    "// Made by packer/embed_jar.py. Do not edit.\n"
    '#include "packer/project/VerifyJar.h"\n\n'
    "namespace corvane::pack {\n\n"
    "static const unsigned char bytes[] = {\n    "
    + ",\n    ".join(rows)
    + "};\n\n"
    "std::string_view verifyJar() {\n"
    "    return {reinterpret_cast<const char*>(bytes), sizeof bytes};\n"
    "}\n\n"
    "}  // namespace corvane::pack\n"
)
