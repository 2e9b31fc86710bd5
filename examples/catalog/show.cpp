// Shows a catalogue as a tree.
#include "examples/catalog/catalogue.h"
#include "examples/catalog/commands.h"

#include <algorithm>
#include <iostream>

namespace {

struct Totals {
    unsigned int files = 0;
    unsigned int dirs = 0;
    unsigned long long bytes = 0;
};

class Tree {
public:
    explicit Tree(Order order) : order_(order) {}

    void show(NX_DirInfo const& dir, unsigned int depth) {
        line(dir, depth);
        ++totals_.dirs;
        NX_FileInfoVec files(dir.fileColl());
        if (FileCompare const compare = fileCompare(order_))
            files.dataSort(compare);
        for (NX_FileInfoVecPtrConst file(files); file.itemIsAvail() != 0; ++file) {
            line(*file, depth + 1);
            ++totals_.files;
            totals_.bytes += file->fileSize();
        }
        // Pointers are put in order, not the records: a copied record would carry its whole subtree.
        NX_VecT<NX_DirInfo const*> subs;
        for (NX_DirInfoVecPtrConst sub(dir.subColl()); sub.itemIsAvail() != 0; ++sub)
            subs += &*sub;
        sortSubs(subs);
        for (unsigned int n = 0; n < subs.itemQty(); ++n)
            show(*static_cast<NX_VecT<NX_DirInfo const*> const&>(subs)[n], depth + 1);
    }

    Totals const& totals() const { return totals_; }

private:
    void sortSubs(NX_VecT<NX_DirInfo const*>& subs) const {
        if (DirCompare const compare = dirCompare(order_))
            std::sort(subs.dataPMod(), subs.dataPMod() + subs.itemQty(),
                      [compare](NX_DirInfo const* a, NX_DirInfo const* b) { return compare(a, b) < 0; });
    }

    void line(NX_FileInfo const& info, unsigned int depth) {
        static char const letters[] = "adhrs";
        char attributes[] = "-----";
        for (unsigned int bit = 0; bit < 5; ++bit)
            if ((info.fileType() & (1u << bit)) != 0)
                attributes[bit] = letters[bit];
        NX_FileAge8 const& age = info.fileAge();
        text_.strPrintF("%10lu  %04d/%02d/%02d %02d:%02d:%02d  %s  ", info.fileSize(), age.year, age.month,
                        age.day, age.hour, age.minute, age.second, attributes);
        std::cout << text_ << NX_StringA(' ', 2 * depth) << static_cast<NX_StringA const&>(info) << '\n';
    }

    Order const order_;
    Totals totals_;
    NX_StringA text_;
};

} // namespace

int commandShow(Options const& options) {
    Catalogue catalogue;
    if (catalogue.fileLoad(options.first) == -1)
        return -1;
    Tree tree(options.choices.order != Order::none ? options.choices.order : catalogue.choices().order);
    tree.show(catalogue.root(), 0);
    NX_StringA format;
    format.strLoad(121);
    NX_StringA line;
    line.strPrintF(format.dataPConst(), tree.totals().files, tree.totals().dirs, tree.totals().bytes);
    std::cout << line << '\n';
    return 0;
}
