#pragma once

#include <string_view>

namespace varnolix {

/// A reference collection that the user can choose.
struct Collection {
    std::string_view menuText;
    std::string_view name;         ///< value of DBName
    std::string_view reportLabel;  ///< printed after "Matching motif database: "
    std::string_view file;         ///< relative to the working directory
    std::string_view taxon;        ///< stored in every motif; empty if the file gives it
};

/// In the order of the menu, which ends with one more answer: 14, "None".
inline constexpr Collection collections[] = {
    {"Jaspar 2016 (All)", "jasparAll", "Jaspar Core", "/databases/jaspar/jaspar_pfm_all.txt", ""},
    {"Jaspar 2016 (Fungi)", "jasparFungi", "Jaspar Fungi", "/databases/jaspar/jaspar_pfm_fungi.txt", "Fungi"},
    {"Jaspar 2016 (Insects)", "jasparInsects", "Jaspar Insects", "/databases/jaspar/jaspar_pfm_insects.txt", "Insects"},
    {"Jaspar 2016 (Nematodes)", "jasparNematodes", "Jaspar Nematodes", "/databases/jaspar/jaspar_pfm_nematodes.txt",
     "Nematodes"},
    {"Jaspar 2016 (Plants)", "jasparPlants", "Jaspar Plants", "/databases/jaspar/jaspar_pfm_plants.txt", "Plants"},
    {"Jaspar 2016 (Urochordates)", "jasparUrochordates", "Jaspar Urochordates",
     "/databases/jaspar/jaspar_pfm_urochordates.txt", "Urochordates"},
    {"Jaspar 2016 (Vertebrates)", "jasparVertebrates", "Jaspar Vertebrates",
     "/databases/jaspar/jaspar_pfm_vertebrates.txt", "Vertebrates"},
    {"Transfac (Free version)", "transfac", "Transfac", "/databases/transfac/transfac.txt", ""},
    {"UniPROBE (Human)", "uniprobeHuman", "UniProbe Homo Sapiens", "/databases/uniprobe/uniprobe_human.txt",
     "Homo sapiens"},
    {"UniPROBE (Mouse)", "uniprobeMouse", "UniProbe Mus Musculus", "/databases/uniprobe/uniprobe_mouse.txt",
     "Mus musculus"},
    {"UniPROBE (Parasite)", "uniprobeParasite", "UniProbe Parasite (Plasmodium Falciparum)",
     "/databases/uniprobe/uniprobe_parasite.txt", "Parasite (Plasmodium Falciparum)"},
    {"UniPROBE (Worm)", "uniprobeWorm", "UniProbe Worm (Caenorhabditis Elegans)",
     "/databases/uniprobe/uniprobe_worm.txt", "Worm (Caenorhabditis Elegans)"},
    {"UniPROBE (Yeast)", "uniprobeYeast", "UniProbe Yeast (Saccharomyces Cerevisiae)",
     "/databases/uniprobe/uniprobe_yeast.txt", "Yeast (saccharomyces cerevisiae)"},
};

/// The collection of this name, or nullptr if there is none, as when the user chose "None".
constexpr const Collection* findCollection(std::string_view name) {
    for (const Collection& collection : collections) {
        if (collection.name == name) return &collection;
    }
    return nullptr;
}

}  // namespace varnolix
