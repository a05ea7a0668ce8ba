// Whatever another program left in the user's classes, and whatever is typed into a settings field: the
// file-type page reads a type's state and icon and takes its registration back without a fault, leaving
// no key of Lumora's behind; a typed number is taken only inside its option's range. The input's first
// line is the extension's handler, the second its "filebak", the rest the handler's icon text and the typing.

#include "FuzzChecks.h"
#include "settings/OptionForm.h"
#include "shell/FileTypes.h"

LUMORA_FUZZ(input) {
    const size_t first = input.find('\n');
    const size_t second = first == std::string_view::npos ? first : input.find('\n', first + 1);
    const std::string handler(input.substr(0, first));
    const std::string saved(first == std::string_view::npos ? "" : input.substr(first + 1, second - first - 1));
    const std::string rest(second == std::string_view::npos ? "" : input.substr(second + 1));

    for (const FormItem& item : FormItems()) {
        if (item.kind != FormControl::Number) continue;
        const auto typed = TypedNumber(item, rest);
        Check(!typed || (*typed >= FormBounds(item).low && *typed <= FormBounds(item).high));
    }

    Ports p;
    const auto text = [](const std::string& t) { return RegistryValue{RegistryValue::Kind::Text, t}; };
    p.reg.Put(RegistryRoot::CurrentUser, "Software\\Classes\\.mp3", "", text(handler));
    if (first != std::string_view::npos) p.reg.Put(RegistryRoot::CurrentUser, "Software\\Classes\\.mp3", "filebak", text(saved));
    p.reg.CreateKey(RegistryRoot::CurrentUser, "Software\\Classes\\ZEV_.mp3");  // a sub-key's parent exists
    p.reg.Put(RegistryRoot::CurrentUser, "Software\\Classes\\ZEV_.mp3\\DefaultIcon", "", text(rest));
    FileTypeRegistrar registrar(p.wrapper, "C:\\Lumora\\Lumora.exe");
    const FileTypeState state = registrar.RefreshFileTypeItem(".mp3");
    Check(!state.handled && state.icon.file.size() <= rest.size());
    Check(registrar.RemoveFileType(".mp3"));
    Check(!p.reg.Find(RegistryRoot::CurrentUser, "Software\\Classes\\ZEV_.mp3\\DefaultIcon", ""));
}
