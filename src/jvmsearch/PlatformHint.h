// Platform hints: registry values that hold a JVM's home.
#pragma once

#include "foundation/String.h"
#include "foundation/StringList.h"
#include "jvmsearch/PlaceTree.h"
#include "platform/Platform.h"

namespace corvane {

// Clears `paths` and adds at most one text: the registry value that `hint` names
// (\HIVE\KEY\VALUE, or \HIVE\KEY for the key's default value). What can't be read is a warning in
// the log, unless the hint is `guessed` and it merely isn't there; an unknown hive raises a
// `LauncherException`.
void resolvePlatformHint(const String& hint, StringList& paths, bool guessed = false);

// The hives of the registry.
struct Hive {
    const char* name;
    HKEY key;
};
extern const Hive hives[5];

// The hive that a text of the form \HIVE\KEY\VALUE names, whether or not it exists; empty without a
// key behind it.
String hiveOf(const String& text);

// The keys of the registry, as \HIVE\KEY.
class KeyTree final : public PlaceTree {
    void list(const String& place, StringList& names) const override;
    // A key is read anyway.
    bool exists(const String&) const override { return true; }
};

// Whether a hint has `*` in the names of its keys. In that of the value it is a character as
// others.
bool isGuess(const String& hint);

// Appends the hints that a guess stands for; an unknown hive raises as above.
void expandPlatformHint(const String& hint, KeyTree& keys, StringList& hints);

// A value of the registry.
struct RegistryPlace {
    HKEY hive;
    String keyPath;
    String valueName;
};

// The value that a text of the form \HIVE\KEY\VALUE names; an unknown hive raises as above.
RegistryPlace parseRegistryPlace(const String& text);

// The value as a text; empty if it can't be read.
String readRegistryText(const RegistryPlace& place);

// Clears `paths` and adds the places where this platform keeps its JVMs. None on Windows.
void listPlatformJvmPaths(StringList& paths);

}  // namespace corvane
