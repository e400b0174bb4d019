"""Tag files that a case gives as tables, and the tags that most files of their kind have."""

from pathlib import Path

SHARED_TAGS = {
    "jvm": {
        "DESC": "Java 8 or later",
        "JVM_EXE": r"bin\java.exe",
        "JVM_PROPERTIES": "corvane.java.atleast.8=true",
        "CLASSPATH": '" -cp "',
        "CLASSPATH_SEPARATOR": ";",
        "SYSTEM": '" -D"',
        "SYSTEM_SEPARATOR": "=",
    },
    "manifest": {
        "INSTRUCTIONS": "hello.script",
        "LAUNCHSCRIPT": "hello.launch",
        "CLASSPATH_FILE": "examples/hello/hello.jar",
    },
    "tag": {"LOGFILE": r"$SCRATCH\log"},
}


def text_of(name, content):
    """The text of a file: `content` itself, a text so many times, a table of tags, or the lines of a
    script."""
    if isinstance(content, str):
        return content
    if "times" in content:
        return content["text"] * content["times"]
    if isinstance(content, list):
        content = {"INSTRUCTIONS": content}
    kind = Path(name).name.rpartition(".")[2]
    tags = {**SHARED_TAGS.get(kind, {}), **content}
    return "".join(tag_text(tag, value) for tag, value in tags.items() if value is not False)


def tag_text(tag, value):
    if isinstance(value, list):
        return "\n".join([f"{tag}:", *(f"  {line}" for line in value), "/:\n"])
    return f"{tag}: {value}\n"
