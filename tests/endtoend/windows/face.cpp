// Prints what Windows reads of a program's face: version information, icons, title and manifest,
// and whether the checksum in its headers holds. Usage: face FILE
#include <windows.h>
// Behind it.
#include <imagehlp.h>
#include <shellapi.h>

#include <cstdio>
#include <cstring>
#include <string>

namespace {

std::string narrow(const wchar_t* text, int length) {
    std::string out(static_cast<std::size_t>(length) * 3, '\0');
    out.resize(static_cast<std::size_t>(WideCharToMultiByte(
        CP_UTF8, 0, text, length, out.data(), static_cast<int>(out.size()), nullptr, nullptr)));
    return out;
}

void printVersion(const wchar_t* path) {
    DWORD ignored = 0;
    std::string block(GetFileVersionInfoSizeW(path, &ignored), '\0');
    GetFileVersionInfoW(path, 0, static_cast<DWORD>(block.size()), block.data());
    void* value = nullptr;
    UINT size = 0;
    if (VerQueryValueW(block.data(), L"\\", &value, &size)) {
        const auto* const fixed = static_cast<const VS_FIXEDFILEINFO*>(value);
        std::printf("version %u.%u.%u.%u\n", HIWORD(fixed->dwFileVersionMS),
                    LOWORD(fixed->dwFileVersionMS), HIWORD(fixed->dwFileVersionLS),
                    LOWORD(fixed->dwFileVersionLS));
    }
    if (!VerQueryValueW(block.data(), L"\\VarFileInfo\\Translation", &value, &size))
        return;
    const auto* const languages = static_cast<const WORD*>(value);
    for (const wchar_t* name :
         {L"CompanyName", L"FileDescription", L"FileVersion", L"LegalCopyright",
          L"OriginalFilename", L"ProductName", L"ProductVersion"}) {
        wchar_t query[100];
        swprintf(query, 100, L"\\StringFileInfo\\%04X%04X\\%ls", languages[0], languages[1], name);
        if (VerQueryValueW(block.data(), query, &value, &size))
            std::printf(
                "%ls = %s\n", name,
                narrow(static_cast<const wchar_t*>(value), static_cast<int>(size) - 1).c_str());
    }
}

template <class Item>
Item* load(HMODULE program, HRSRC found) {
    return static_cast<Item*>(LockResource(LoadResource(program, found)));
}

void printIcon(HMODULE program, BYTE* group, int side) {
    const int id = LookupIconIdFromDirectoryEx(group, TRUE, side, side, LR_DEFAULTCOLOR);
    HRSRC const found = FindResourceW(program, MAKEINTRESOURCEW(id), MAKEINTRESOURCEW(3));
    HICON const icon =
        CreateIconFromResourceEx(load<BYTE>(program, found), SizeofResource(program, found), TRUE,
                                 0x00030000, 0, 0, LR_DEFAULTCOLOR);
    ICONINFO information{};
    BITMAP bitmap{};
    if (GetIconInfo(icon, &information))
        GetObjectW(information.hbmColor, sizeof bitmap, &bitmap);
    std::printf(" %ldx%d", bitmap.bmWidth, bitmap.bmBitsPixel);
}

BOOL CALLBACK printGroup(HMODULE program, LPCWSTR type, LPWSTR name, LONG_PTR) {
    std::printf("icon %d:", static_cast<int>(reinterpret_cast<LONG_PTR>(name)));
    auto* const group = load<BYTE>(program, FindResourceW(program, name, type));
    for (const int side : {16, 20, 24, 32, 40, 48, 64, 256})
        printIcon(program, group, side);
    std::printf("\n");
    return TRUE;
}

struct Titles {
    int count = 0;
    std::string first;
    bool alike = true;
};

BOOL CALLBACK addTitle(HMODULE program, LPCWSTR type, LPCWSTR name, WORD language,
                       LONG_PTR titles) {
    constexpr int titleOfBlock = 9;
    const auto* text = load<const wchar_t>(program, FindResourceExW(program, type, name, language));
    for (int i = 0; i < titleOfBlock; ++i)
        text += *text + 1;
    const std::string title = narrow(text + 1, *text);
    auto& all = *reinterpret_cast<Titles*>(titles);
    if (all.count++ == 0)
        all.first = title;
    all.alike = all.alike && title == all.first;
    return TRUE;
}

void printTitle(HMODULE program) {
    Titles titles;
    EnumResourceLanguagesW(program, MAKEINTRESOURCEW(6), MAKEINTRESOURCEW(7), addTitle,
                           reinterpret_cast<LONG_PTR>(&titles));
    if (titles.alike && titles.count > 20)
        std::printf("title %s\n", titles.first.c_str());
}

void printLevel(HMODULE program) {
    HRSRC const found = FindResourceW(program, MAKEINTRESOURCEW(1), MAKEINTRESOURCEW(24));
    const std::string text(load<const char>(program, found), SizeofResource(program, found));
    const std::size_t start = text.find("requestedExecutionLevel level=");
    std::printf("%s\n", text.substr(start, text.find(' ', start + 25) - start).c_str());
}

void printHeaders(const wchar_t* path) {
    DWORD written = 0;
    DWORD computed = 0;
    if (MapFileAndCheckSumW(path, &written, &computed) == CHECKSUM_SUCCESS)
        std::printf("checksum %s\n", written == computed ? "holds" : "is wrong");
    const bool windowed = HIWORD(SHGetFileInfoW(path, 0, nullptr, 0, SHGFI_EXETYPE)) != 0;
    std::printf("subsystem %s\n", windowed ? "windows" : "console");
}

}  // namespace

int main(int count, char** arguments) {
    if (count != 2)
        return 2;
    wchar_t name[MAX_PATH];
    MultiByteToWideChar(CP_ACP, 0, arguments[1], -1, name, MAX_PATH);
    wchar_t path[MAX_PATH];
    GetFullPathNameW(name, MAX_PATH, path, nullptr);
    HMODULE const program = LoadLibraryExW(path, nullptr, LOAD_LIBRARY_AS_DATAFILE);
    if (program == nullptr)
        return 3;
    printHeaders(path);
    printVersion(path);
    EnumResourceNamesW(program, MAKEINTRESOURCEW(14), printGroup, 0);
    printTitle(program);
    printLevel(program);
    std::printf("icons of the shell: %u\n", ExtractIconExW(path, -1, nullptr, nullptr, 0));
    return 0;
}
