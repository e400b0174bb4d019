#!/usr/bin/env python3
"""Writes files as a C++ source, each under its name and that of its folder ("windows/17.jvm").

Usage: embed_files.py OUTPUT FILE..."""

import sys
from pathlib import Path

ROW = 24


def array(number, data):
    rows = (", ".join(map(str, data[i : i + ROW])) for i in range(0, len(data), ROW))
    return f"const unsigned char bytes{number}[] = {{\n    " + ",\n    ".join(rows) + "};\n\n"


def row(number, path):
    content = f"{{reinterpret_cast<const char*>(bytes{number}), sizeof bytes{number}}}"
    return f'    {{"{path.parent.name}/{path.name}", {content}}},\n'


paths = [Path(name) for name in sys.argv[2:]]
Path(sys.argv[1]).write_text(
    "// Made by packer/project/embed_files.py. Do not edit.\n"
    '#include "packer/project/EmbeddedFiles.h"\n\n'
    "namespace corvane::pack {\n\n"
    "namespace {\n\n"
    + "".join(array(number, path.read_bytes()) for number, path in enumerate(paths))
    + "}  // namespace\n\n"
    "const std::vector<EmbeddedFile>& embeddedFiles() {\n"
    "    static const std::vector<EmbeddedFile> files = {\n"
    + "".join("    " + row(number, path) for number, path in enumerate(paths))
    + "    };\n"
    "    return files;\n"
    "}\n\n"
    "}  // namespace corvane::pack\n"
)
