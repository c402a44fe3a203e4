#include "job/downloads/motif_writers.h"

#include <gtest/gtest.h>

namespace varnolix::job {

namespace {

DownloadedMotif example() {
    DownloadedMotif motif;
    motif.id = "M 1";
    motif.name = "Sox 2";
    motif.taxon = "Mus musculus";
    motif.columns = {{"1", "2.50", "0", "10"}, {"0", "0", "0", "0"}, {"0.333333", "0.333333", "0.333333", "0.000000"}};
    return motif;
}

}  // namespace

TEST(MotifWriters, Jaspar) {
    EXPECT_EQ(
        jasparText(example()),
        ">M_1 Sox_2\nA [    1 0 0.333333 ]\nC [ 2.50 0 0.333333 ]\nG [    0 0 0.333333 ]\nT [   10 0 0.000000 ]\n\n");
    EXPECT_TRUE(jasparText(example(), Taxon::written).starts_with(">M_1 Sox_2 Mus musculus\n"));
    DownloadedMotif nameless = example();
    nameless.name.clear();
    EXPECT_TRUE(jasparText(nameless).starts_with(">M_1 M_1\n"));
}

TEST(MotifWriters, Transfac) {
    EXPECT_EQ(transfacText(example(), Taxon::written),
              "AC  M_1\nXX\nID  Sox_2\nXX\nNA  Sox 2\nXX\nOS  Mus musculus\nXX\nP0  A  C  G  T\n01  1  2.50  0  10\n"
              "02  0  0  0  0\n03  0.333333  0.333333  0.333333  0.000000\nXX\n//\n");
    EXPECT_EQ(transfacText(example()).find("OS"), std::string::npos);
}

TEST(MotifWriters, Meme) {
    DownloadedMotif probabilities = example();
    probabilities.id = "M2";
    probabilities.name.clear();
    probabilities.columns.erase(probabilities.columns.begin(), probabilities.columns.begin() + 2);
    const std::string text = memeText(std::vector<DownloadedMotif>{example(), probabilities});
    EXPECT_EQ(text,
              "MEME version 4\n\nALPHABET= ACGT\n\nstrands: + -\n\nBackground letter frequencies\n"
              "A 0.25 C 0.25 G 0.25 T 0.25\n\n"
              "MOTIF M_1 Sox_2\nletter-probability matrix: alength= 4 w= 3 nsites= 14 E= 0\n"
              " 0.07407407407407407 0.18518518518518517 0 0.7407407407407407\n 0 0 0 0\n"
              " 0.333333 0.333333 0.333333 0.000000\n\n"
              "MOTIF M2\nletter-probability matrix: alength= 4 w= 1 nsites= 20 E= 0\n 0.333333 0.333333 0.333333 "
              "0.000000\n\n");
    probabilities.siteCount = "37";
    EXPECT_NE(memeText(std::vector<DownloadedMotif>{probabilities}).find(" nsites= 37 "), std::string::npos);
    probabilities.siteCount = "many";
    EXPECT_NE(memeText(std::vector<DownloadedMotif>{probabilities}).find(" nsites= 20 "), std::string::npos);
}

TEST(MotifWriters, Table) {
    DownloadedMotif motif = example();
    motif.columns.resize(1);
    motif.name = "a\tb";
    EXPECT_EQ(tsvText(std::vector<DownloadedMotif>{motif}),
              "id\tname\tposition_1based\tA\tC\tG\tT\nM 1\ta b\t1\t1\t2.50\t0\t10\n");
}

}  // namespace varnolix::job
