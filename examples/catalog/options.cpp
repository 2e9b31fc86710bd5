#include "examples/catalog/options.h"

#include "examples/catalog/catalogue.h"
#include "examples/catalog/errors.h"

#include <cstring>

namespace {

struct Word {
    char const* text;
    int value;
};

Word const commands[] = {{"scan", static_cast<int>(Command::scan)},
                         {"show", static_cast<int>(Command::show)},
                         {"find", static_cast<int>(Command::find)},
                         {"diff", static_cast<int>(Command::diff)},
                         {"resources", static_cast<int>(Command::resources)}};
Word const orders[] = {{"name", static_cast<int>(Order::name)},
                       {"age", static_cast<int>(Order::age)},
                       {"size", static_cast<int>(Order::size)}};
Word const classes[] = {{"all", NX_FileFindAll},
                        {"archive", NX_FileFindArchive},
                        {"hidden", NX_FileFindHidden},
                        {"readonly", NX_FileFindReadOnly},
                        {"system", NX_FileFindSystem}};

int fail(NX_ErrorNum num, char const* text) {
    NxERROR(num);
    return NxErrorBufText(text);
}

template <std::size_t Count>
bool wordFind(Word const (&words)[Count], char const* text, int& value) {
    for (Word const& word : words) {
        if (std::strcmp(word.text, text) == 0) {
            value = word.value;
            return true;
        }
    }
    return false;
}

template <std::size_t Count>
NX_StringA wordList(Word const (&words)[Count]) {
    NX_StringA list;
    for (Word const& word : words)
        list += (list.strLen() != 0 ? NX_StringA("|") : NX_StringA()) + word.text;
    return list;
}

// The file, or directory, that `name` means.
NX_StringA catalogueOf(NX_StringA const& name) {
    NX_EnvString const dir(catalogDirVariable);
    if (dir.strLen() == 0 || name.nameOfDir().strLen() != 0 || name.nameType() != NX_FileNameMissing)
        return name;
    return {dir, name.dataPConst(), name.strLen(), NX_FileTypeFile};
}

// An option that is followed by a value.
int valueRead(Options& options, char const* option, char const* value) {
    int number = 0;
    if (!nameKeeps(value) || (std::strcmp(option, "--leave-out") == 0 && std::strchr(value, '/') != nullptr))
        return fail(errorOptionText, value);
    if (std::strcmp(option, "--pattern") == 0) {
        options.choices.pattern = value;
    } else if (std::strcmp(option, "--leave-out") == 0) {
        options.choices.leaveOut += NX_StringA(value);
    } else if (std::strcmp(option, "--sort") == 0) {
        if (!wordFind(orders, value, number))
            return fail(errorOptionText, value);
        options.choices.order = static_cast<Order>(number);
    } else {
        if (!wordFind(classes, value, number))
            return fail(errorOptionText, value);
        options.choices.find = static_cast<NX_FileFindType>(number | NX_FileFindNoDir);
    }
    return 0;
}

// Which options a command takes.
bool optionKnown(Command command, char const* option) {
    static struct {
        char const* option;
        Command command;
    } const known[] = {{"--pattern", Command::scan},     {"--leave-out", Command::scan},
                       {"--sort", Command::scan},        {"--files-of", Command::scan},
                       {"--sort", Command::show},        {"--contents", Command::diff},
                       {"--extract", Command::resources}};
    for (auto const& entry : known)
        if (entry.command == command && std::strcmp(entry.option, option) == 0)
            return true;
    return false;
}

} // namespace

NX_StringA optionOrders() {
    return wordList(orders);
}

NX_StringA optionClasses() {
    return wordList(classes);
}

int optionsRead(int argc, char** argv, Options& options) {
    if (argc < 2 || std::strcmp(argv[1], "help") == 0)
        return 0;
    int command = 0;
    if (!wordFind(commands, argv[1], command))
        return fail(errorCommand, argv[1]);
    options.command = static_cast<Command>(command);
    bool const one = options.command == Command::show || options.command == Command::resources;
    int const wanted = one ? 1 : 2;
    int given = 0;
    for (int n = 2; n < argc; ++n) {
        char const* const text = argv[n];
        if (std::strncmp(text, "--", 2) != 0) {
            if (given == wanted || *text == 0)
                return fail(errorArguments, *text != 0 ? text : argv[1]);
            (given++ == 0 ? options.first : options.second) = text;
        } else if (!optionKnown(options.command, text)) {
            return fail(errorOption, text);
        } else if (std::strcmp(text, "--contents") == 0) {
            options.contents = true;
        } else if (n + (std::strcmp(text, "--extract") == 0 ? 2 : 1) >= argc) {
            return fail(errorOptionValue, text);
        } else if (std::strcmp(text, "--extract") == 0) {
            options.extract = argv[++n];
            options.second = argv[++n];
            if (options.extract.strLen() == 0 || options.second.strLen() == 0)
                return fail(errorOptionText, text);
        } else if (valueRead(options, text, argv[++n]) == -1) {
            return -1;
        }
    }
    if (given != wanted)
        return fail(errorArguments, argv[1]);
    if (options.command != Command::scan && options.command != Command::resources)
        options.first = catalogueOf(options.first);
    if (options.command == Command::scan || options.command == Command::diff)
        options.second = catalogueOf(options.second);
    return 0;
}
