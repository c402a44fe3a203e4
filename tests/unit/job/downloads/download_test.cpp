#include "job/downloads/download.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <optional>

#include "job/downloads/layouts.h"

// Each layout with the oddities that downloads have, and each reason for which a motif is refused.

namespace varnolix::job {

namespace {

using testing::HasSubstr;

Download readText(const std::string& text, std::optional<Layout> layout = std::nullopt) {
    return readDownload(text, "file", layout ? &*layout : nullptr);
}

/// "id name: A C G T, A C G T" for each motif.
std::vector<std::string> summaries(const Download& found) {
    std::vector<std::string> texts;
    for (const DownloadedMotif& motif : found.motifs) {
        std::string text = motif.id + " " + motif.name + ":";
        for (const NumberColumn& column : motif.columns) {
            text += (&column == &motif.columns.front() ? " " : ", ") + column[0] + " " + column[1] + " " + column[2] +
                    " " + column[3];
        }
        texts.push_back(text);
    }
    for (const RefusedMotif& motif : found.refused) {
        texts.push_back("refused " + motif.id + " " + std::to_string(motif.line) + ": " + motif.reason);
    }
    return texts;
}

struct Example {
    const char* what;
    std::string text;
    Layout layout;
    std::vector<std::string> expected;
};

void expectAll(const std::vector<Example>& examples) {
    for (const Example& example : examples) {
        const Download found = readText(example.text);
        EXPECT_STREQ(nameOf(found.layout), nameOf(example.layout)) << example.what;
        EXPECT_EQ(summaries(found), example.expected) << example.what;
    }
}

const std::vector<std::string> twoMotifs = {"M1 one: 1 2 3 4, 0.5 0 0.25 0.25", "M2 two: 0 0 1 0"};

}  // namespace

TEST(ReadDownload, Jaspar) {
    expectAll({
        {"brackets",
         ">M1 one\nA [ 1 0.5 ]\nC [ 2 0 ]\nG [ 3 0.25 ]\nT [ 4 0.25 ]\n\n>M2 two\nA [ 0 ]\nC [ 0 ]\nG [ 1 ]\nT "
         "[ 0 ]\n",
         Layout::jaspar, twoMotifs},
        {"touching brackets, tabs, no last line end",
         ">M1\tone\nA[1 0.5]\nC  [2\t0 ]\nG [ 3 .25]\nT [4 2.5e-1]\n>M2\ttwo\nA[0]\nC[0]\nG[1]\nT[0]", Layout::jaspar,
         twoMotifs},
        {"marks, lower case, order of rows",
         ">M1 one\nt: 4 0.25\ng| 3 0.25\nc 2 0\na : 1 0.5\n>M2 two\nU 0\nA 0\nC 0\nG 1\n", Layout::jaspar, twoMotifs},
        {"no letters, empty lines, comments",
         "# from somewhere\n>M1 one\n\n1 0.5\n2 0\n# more\n3 0.25\n\n4 0.25\n\n\n>M2 two\n[0]\n[0]\n[1]\n[0]\n",
         Layout::jaspar, twoMotifs},
    });
    const Download found = readText("> M1 one Mus musculus\nA 1\nC 1\nG 1\nT 1\n");
    ASSERT_EQ(found.motifs.size(), 1U);
    EXPECT_EQ(found.motifs[0].taxon, "Mus musculus");
    EXPECT_EQ(found.motifs[0].line, 1U);
}

TEST(ReadDownload, FourRowsOfFourValues) {
    const std::string square = "1 0 0 0\n0 1 1 0\n0 0 0 0\n0 0 0 1\n";
    EXPECT_EQ(readText(">M\n" + square).layout, Layout::jaspar) << "each place adds up to 1";
    EXPECT_EQ(readText(">M\n0.5 0.5 0 0\n1 0 0 0\n0 0 0 1\n0 1 0 0\n").layout, Layout::clusterBuster);
    EXPECT_EQ(readText(">M\n0 1 2 3\n5 6 7 9\n1 1 1 1\n2 2 2 2\n").layout, Layout::jaspar) << "nothing tells";
    const Download others = readText(">M\n" + square + ">N\n1 0 0 0\n0 1 0 0\n1 0 0 0\n");
    EXPECT_EQ(summaries(others),
              (std::vector<std::string>{"M : 1 0 0 0, 0 1 1 0, 0 0 0 0, 0 0 0 1", "N : 1 0 0 0, 0 1 0 0, 1 0 0 0"}));
    EXPECT_EQ(readText(square).layout, Layout::rows);
}

TEST(ReadDownload, Meme) {
    const std::string minimal =
        "MEME version 4\n\nALPHABET= ACGT\n\nstrands: + -\n\nBackground letter frequencies\nA 0.3 C 0.2 G 0.2 T 0.3\n\n"
        "MOTIF M1 one\nletter-probability matrix: alength= 4 w= 2 nsites= 20 E= 0\n 1 2 3 4\n 5.0e-1 0e-9 0.25 "
        "+2.5E-01\n"
        "URL http://example.org/M1\n\nMOTIF M2 two\n\nletter-probability matrix: alength= 4 w= 1\n0 0 1 0\n";
    expectAll({{"minimal", minimal, Layout::meme, {"M1 one: 1 2 3 4, 0.50 0 0.25 0.25", "M2 two: 0 0 1 0"}}});
    EXPECT_EQ(readText(minimal).motifs[0].siteCount, "20");
    EXPECT_EQ(readText(minimal).motifs[1].siteCount, "");
}

TEST(ReadDownload, WholeReportsOfMeme) {
    const auto report = [](const std::string& name) {
        const std::string dashes(80, '-');
        return "********\nMOTIF " + name + "\twidth =  2  sites =  5  llr = 9  E-value = 1.0e-002\n********\n" +
               dashes + "\n\tMotif " + name + " Description\n" + dashes +
               "\nSimplified        A  8:\npos.-specific     C  :a\n" + dashes + "\n\tMotif " + name +
               " block diagrams\n" + dashes + "\n4   1_[+1]_10\n" + dashes + "\n\tMotif " + name +
               " in BLOCKS format\n" + dashes + "\nBL   MOTIF " + name + " width=2 seqs=5\ns1 ( 4) AC  1\n//\n\n" +
               dashes + "\n\tMotif " + name + " position-specific scoring matrix\n" + dashes +
               "\nlog-odds matrix: alength= 4 w= 2 n= 50 bayes= 6.6 E= 1.0e-002\n   150 -200 -100 -945\n  -945 190 "
               "-945 "
               "-945\n\n" +
               dashes + "\n\tMotif " + name + " position-specific probability matrix\n" + dashes +
               "\nletter-probability matrix: alength= 4 w= 2 nsites= 5 E= 1.0e-002\n 0.800000  0.000000  0.200000  "
               "0.000000 \n 0.000000  1.000000  0.000000  0.000000 \n" +
               dashes + "\n\n" + dashes + "\n\tMotif " + name + " regular expression\n" + dashes + "\n[AG]C\n" +
               dashes + "\n\nTime  0.11 secs.\n\n";
    };
    const std::string head =
        "MEME - Motif discovery tool\n********\nMEME version 4.9.0\n\nALPHABET= ACGT\nSequence name\n";
    const std::string tail = "********\nSUMMARY OF MOTIFS\n********\nCombined block diagrams\n";
    const std::string columns = ": 0.800000 0.000000 0.200000 0.000000, 0.000000 1.000000 0.000000 0.000000";
    expectAll({
        {"version 4", head + report("1") + report("2") + tail, Layout::meme, {"1 " + columns, "2 " + columns}},
        {"version 5",
         head + report("RC MEME-1") + report("AC MEME-2") + tail,
         Layout::meme,
         {"RC MEME-1" + columns, "AC MEME-2" + columns}},
        {"parts cut from a report",
         "\tMotif 1 position-specific probability matrix\nletter-probability matrix: alength= 4 w= 1\n1 0 0 0\n\n"
         "\tMotif AC MEME-2 position-specific probability matrix\nletter-probability matrix: alength= 4 w= 1\n0 1 0 "
         "0\n\n"
         "letter-probability matrix: alength= 4 w= 1\n0 0 1 0\n",
         Layout::meme,
         {"1 : 1 0 0 0", "AC MEME-2: 0 1 0 0", "file : 0 0 1 0"}},
    });
}

TEST(ReadDownload, AlphabetsOfMeme) {
    const std::string motif = "MOTIF M1\nletter-probability matrix: alength= 4 w= 1\n1 0 0 0\n";
    const auto taken = [&motif](const std::string& alphabet) {
        return readText("MEME version 5\n" + alphabet + "\n" + motif).motifs.size();
    };
    EXPECT_EQ(taken("ALPHABET= ACGU"), 1U);
    EXPECT_EQ(taken("ALPHABET \"DNA\" DNA-LIKE\nA \"Adenine\" 8510A8 ~ T \"Thymine\" A89610\nC \"x\" ~ G \"y\"\nN = "
                    "ACGT\nEND ALPHABET"),
              1U);
    EXPECT_EQ(taken("ALPHABET= ACDEFGHIKLMNPQRSTVWY"), 0U);
    EXPECT_EQ(taken("ALPHABET \"odd\"\nA\nB\nC\nD\nEND ALPHABET"), 0U);
    EXPECT_EQ(summaries(readText("MOTIF P\nletter-probability matrix: alength= 20 w= 1\n1 0 0 0\n")),
              std::vector<std::string>{"refused P 1: an alphabet of 20 letters, not A, C, G and T"});
}

TEST(ReadDownload, Transfac) {
    expectAll({
        {"preamble, notes, consensus letters",
         "VV  head\nXX\n//\nAC  M1\nXX\nID  V$ONE\nXX\nNA  one\nXX\nP0      A      C      G      T\n01 1 2 3 4 T\n02 "
         "0.5 0 "
         "0.25 0.25 A\nXX\nCC  text\nXX\n//\nAC  M2\nNA  two\nP0 A C G T\n1 0 0 1 0\n//\n",
         Layout::transfac, twoMotifs},
        {"tabs, no closing lines, other orders of bases",
         "AC\tM1\nID\tone\nPO\tT\tG\tC\tA\n01\t4\t3\t2\t1\n02\t0.25\t0.25\t0\t0.5\nAC M2\nDE two\nP0 a c g u\n01 0 0 1 "
         "0 G",
         Layout::transfac, twoMotifs},
        {"no heads of positions",
         "DE one\n01\t1\t2\t3\t4\tT\nXX\n\nDE two\n01\t0\t0\t1\t0\tG\nXX\n",
         Layout::transfac,
         {"one one: 1 2 3 4", "two two: 0 0 1 0"}},
        {"a head alone begins an entry",
         "AC M1\nP0 A C G T\n1 1 0 0 0\nP0 A C G T\n1 0 1 0 0\n",
         Layout::transfac,
         {"M1 : 1 0 0 0", "refused file 4: an entry without AC, ID, NA and DE lines"}},
        {"an entry without positions",
         "AC M1\nNA one\n//\nAC M2\nP0 A C G T\n1 1 0 0 0\n//\n",
         Layout::transfac,
         {"M2 : 1 0 0 0", "refused M1 1: no position lines"}},
        {"a position of three",
         "AC M1\nP0 A C G T\n1 1 0 0\n//\n",
         Layout::transfac,
         {"refused M1 1: line 3: a position needs four values, not 3"}},
        {"another alphabet",
         "AC M1\nP0 A C D E F\n1 1 0 0 0\n//\n",
         Layout::transfac,
         {"refused M1 1: positions of A C D E F, not of A, C, G and T"}},
    });
    const Download found = readText(
        "AC M1\nBF  factor; Species: Mus musculus.\nP0 A C G T\n1 1 0 0 0\n//\nAC M2\nOS  Homo sapiens\nP0 A C G T\n1 "
        "1 0 0 "
        "0\n");
    ASSERT_EQ(found.motifs.size(), 2U);
    EXPECT_EQ(found.motifs[0].taxon, "Mus musculus");
    EXPECT_EQ(found.motifs[1].taxon, "Homo sapiens");
}

TEST(ReadDownload, OnePositionALine) {
    expectAll({
        {"HOMER",
         ">ASTT\tELF1(ETS)/Cell Line/Homer\t8.05\t-244.7\t0\tT:1.0\n0.5\t0\t0.25\t0.25\n0 0 1 0\n>CC\tB\t5\n1 0 0 0\n",
         Layout::homer,
         {"ASTT ELF1(ETS)/Cell Line/Homer: 0.5 0 0.25 0.25, 0 0 1 0", "CC B: 1 0 0 0"}},
        {"HOCOMOCO counts",
         ">AHR_HUMAN.H11MO.0.B\n40.5\t18.0\t56.1\t39.4\n0 0 1 0\n",
         Layout::hocomoco,
         {"AHR_HUMAN.H11MO.0.B : 40.5 18.0 56.1 39.4, 0 0 1 0"}},
        {"HOCOMOCO log-odds",
         ">AHR_HUMAN.H11MO.0.B\n-0.5\t0.2\t0.1\t0.3\n1 0 1 0\n",
         Layout::hocomoco,
         {"refused AHR_HUMAN.H11MO.0.B 1: line 2: -0.5 is below 0; counts or frequencies are needed, no log-odds"}},
        {"cluster-buster",
         ">one of many words\n# GAP 2\n1 2 3 4\n0 0 1 0\n",
         Layout::clusterBuster,
         {"one of many words: 1 2 3 4, 0 0 1 0"}},
        {"bases named", ">one\nT G C A\n4 3 2 1\n", Layout::clusterBuster, {"one : 1 2 3 4"}},
        {"a row too short",
         ">one\n1 2 3 4\n1 2 3\n1 2 3 4\n",
         Layout::clusterBuster,
         {"refused one 1: line 3: a position needs four values, not 3"}},
    });
}

TEST(ReadDownload, Cisbp) {
    expectAll({
        {"the table of one motif",
         "Pos\tA\tC\tG\tT\n1\t0.5\t0\t0.25\t0.25\n2\t0\t0\t1\t0\n",
         Layout::cisbp,
         {"file : 0.5 0 0.25 0.25, 0 0 1 0"}},
        {"texts above tables",
         "TF\tT1\nTF Name\tNfat "
         "5\nGene\tENSG1\nMotif\tM1_2.00\nFamily\tx\nPos\tA\tC\tG\tT\n1\t1\t0\t0\t0\n\nTF\tT2\nTF "
         "Name\ttwo\nMotif\tM2\nPos\tA\tC\tG\tU\n1\t0\t1\t0\t0\n",
         Layout::cisbp,
         {"M1_2.00 Nfat 5: 1 0 0 0", "M2 two: 0 1 0 0"}},
        {"tables without rows",
         "TF\tT1\nMotif\tM1\nPos\tA\tC\tG\tT\n\nTF\tT2\nMotif\tM2\n",
         Layout::cisbp,
         {"refused M1 1: no rows of values", "refused M2 5: no table of positions (Pos A C G T)"}},
    });
    const Download cut = readText("Motif\tM1\nPos\tA\tC\tG\tT\n1\t1\t0\t0\t0\n\nMotif\tM2\n");
    EXPECT_EQ(summaries(cut),
              (std::vector<std::string>{"M1 : 1 0 0 0", "refused M2 5: no table of positions (Pos A C G T)"}));
}

TEST(ReadDownload, Uniprobe) {
    const auto table = [](const char* first) { return "A:\t" + std::string(first) + "\nC:\t0\nG:\t0\nT:\t1\n\n"; };
    expectAll({
        {"protein and gene",
         "UP00001\tProtein: one\tSeed k-mer: x\n\nA:\t1\t0.5\nC:\t2\t0\nG:\t3\t0.25\nT:\t4\t0.25\n\nUP00002\tGene: "
         "two\n\nA:0\nC:\t0\nG:\t1\nT:\t0",
         Layout::uniprobe,
         {"UP00001 one: 1 2 3 4, 0.5 0 0.25 0.25", "UP00002 two: 0 0 1 0"}},
        {"other tables of the protein",
         "Protein: Sox4\tEnrichment Score: 0.4\n\nEnergy matrix for enoLOGOS\n\nPO\t1\n" + table("-3") +
             "Reverse complement matrix for enoLOGOS\n\nPO\t1\n" + table("2") + "Probability matrix\n\n" + table("3"),
         Layout::uniprobe,
         {"Sox4 Sox4: 3 0 0 1"}},
        {"energies alone",
         "Protein: Sox4\nEnergy matrix\n" + table("-3") + "Protein: Sox5\n" + table("1"),
         Layout::uniprobe,
         {"Sox5 Sox5: 1 0 0 1", "refused Sox4 1: no table of probabilities"}},
        {"a name without a table",
         "Protein: A\n" + table("1") + "Protein: B\n",
         Layout::uniprobe,
         {"A A: 1 0 0 1", "refused B 7: no table of probabilities"}},
        {"a table without a name", table("1"), Layout::uniprobe, {"file : 1 0 0 1"}},
        {"a table cut off",
         "Protein: A\n\nA: 1\nC: 1\nG",
         Layout::uniprobe,
         {"refused A 1: 3 rows of values, not four"}},
    });
}

TEST(ReadDownload, Sites) {
    expectAll({
        {"one motif of all records",
         ">s1\nACGT\n>s2\nacgn\n>s3\nA-GU\n",
         Layout::sites,
         {"file : 3 0 0 0, 0 2 0 0, 0 0 3 0, 0 0 0 2"}},
        {"a motif each where records have several",
         ">one\nAC\nAG\n\n>two\nTTT\nTTT\n",
         Layout::sites,
         {"one : 2 0 0 0, 0 1 1 0", "two : 0 0 0 2, 0 0 0 2, 0 0 0 2"}},
        {"surroundings in lower case",
         ">s 1\nggACGt\n>s 2\ncACTtttt\n",
         Layout::sites,
         {"file : 2 0 0 0, 0 2 0 0, 0 0 1 1"}},
        {"a column of gaps alone", ">a\nA-\n>b\nC-\n", Layout::sites, {"file : 1 1 0 0, 0 0 0 0"}},
        {"one is too short",
         ">a\nACG\n>b\nACG\n>c\nAC\n",
         Layout::sites,
         {"refused file 1: line 6: a site of 2 letters, the first has 3; if each is a motif of its own, choose the "
          "layout consensus"}},
        {"a header without a site",
         ">a\nACG\n>b\nACG\n>c\n",
         Layout::sites,
         {"refused file 1: line 5: a header without a site"}},
    });
    EXPECT_EQ(readText(">a\nAC\n>b\nAG\n").motifs[0].siteCount, "2");
    EXPECT_EQ(summaries(readText("AC\nAG\n", Layout::sites)), std::vector<std::string>{"file : 2 0 0 0, 0 1 1 0"});
}

TEST(ReadDownload, Consensus) {
    expectAll({
        {"letters for several bases",
         ">one first\nAY\n>two\nnu",
         Layout::consensus,
         {"one first: 1 0 0 0, 0 1 0 1", "two : 1 1 1 1, 0 0 0 1"}},
        {"one record of bases", ">one\nACG\n", Layout::consensus, {"one : 1 0 0 0, 0 1 0 0, 0 0 1 0"}},
        {"bases of various lengths",
         ">one\nAC\n>two\nACG\n",
         Layout::consensus,
         {"one : 1 0 0 0, 0 1 0 0", "two : 1 0 0 0, 0 1 0 0, 0 0 1 0"}},
        {"a protein",
         ">one\nMEEPQSDPSV\n>two\nACR\n",
         Layout::consensus,
         {"two : 1 0 0 0, 0 1 0 0, 1 0 1 0", "refused one 1: line 2: \"E\" is no IUPAC letter of nucleotides"}},
        {"no string", ">one\nRY\n>two\n", Layout::consensus, {"one : 1 0 1 0, 0 1 0 1", "refused two 3: no consensus"}},
    });
    const std::string kmers = ">one\nAC\n>two\nAG\n";
    EXPECT_EQ(readText(kmers).layout, Layout::sites);
    EXPECT_EQ(readText(kmers, Layout::consensus).motifs.size(), 2U);
}

TEST(ReadDownload, BareMatrices) {
    expectAll({
        {"rows",
         "1 0.5\n2 0\n3 0.25\n4 0.25\n\n\n0\n0\n1\n0\n",
         Layout::rows,
         {"file_1 : 1 2 3 4, 0.5 0 0.25 0.25", "file_2 : 0 0 1 0"}},
        {"rows with letters, no empty lines",
         "T 4\nG 3\nC 2\nA 1\nA [ 0 ]\nC [ 0 ]\nG [ 1 ]\nT [ 0 ]\n",
         Layout::rows,
         {"file_1 : 1 2 3 4", "file_2 : 0 0 1 0"}},
        {"columns",
         "1 2 3 4\n0.5 0 .25 0.25\n\n0\t0\t1\t0\n",
         Layout::columns,
         {"file_1 : 1 2 3 4, 0.5 0 0.25 0.25", "file_2 : 0 0 1 0"}},
        {"named columns", "# a comment\nA C G T\n1 2 3 4\n", Layout::columns, {"file : 1 2 3 4"}},
        {"five rows", "1 1\n1 1\n1 1\n1 1\n1 1\n", Layout::rows, {"refused file 1: 5 rows of values, not four"}},
    });
}

TEST(ReadDownload, RefusesMotifsInWords) {
    expectAll({
        {"three rows",
         ">M1\n1\n0\n0\n>M2\n1\n0\n0\n0\n",
         Layout::jaspar,
         {"M2 : 1 0 0 0", "refused M1 1: 3 rows of values, not four"}},
        {"a letter twice",
         ">M\nA 1\nC 0\nG 0\nG 0\n",
         Layout::jaspar,
         {"refused M 1: rows A, C, G, G, not A, C, G, T"}},
        {"lengths", ">M\n1 1\n0\n0 0\n0 0\n", Layout::jaspar, {"refused M 1: rows of different length (2, 1, 2, 2)"}},
        {"no values", ">M\nA [ ]\nC [ ]\nG [ ]\nT [ ]\n", Layout::jaspar, {"refused M 1: a row without values"}},
        {"a word", ">M\n1\nx\n0\n0\n", Layout::jaspar, {"refused M 1: \"x\" is no number"}},
        {"not a number", ">M\n1\nnan\n0\n0\n", Layout::jaspar, {"refused M 1: \"nan\" is no number"}},
        {"infinity", ">M\n1\ninf\n0\n0\n", Layout::jaspar, {"refused M 1: \"inf\" is no number"}},
        {"below 0",
         ">M\n1\n-0.5\n0\n0\n",
         Layout::jaspar,
         {"refused M 1: -0.5 is below 0; counts or frequencies are needed, no log-odds"}},
        {"values above the first header",
         "1\n0\n0\n0\n>M\n1\n0\n0\n0\n",
         Layout::jaspar,
         {"M : 1 0 0 0", "refused file 1: values before the first header line (\">ID NAME\")"}},
        {"no id", ">\n1\n0\n0\n0\n", Layout::jaspar, {"refused file 1: a header without an id"}},
        {"a header alone", ">M\n", Layout::jaspar, {"refused M 1: no rows of values"}},
        {"width",
         "MOTIF M\nletter-probability matrix: alength= 4 w= 3\n1 0 0 0\n1 0 0 0\n",
         Layout::meme,
         {"refused M 1: 2 rows, but w= 3"}},
        {"no matrix",
         "MEME version 4\nMOTIF M1\nMOTIF\n",
         Layout::meme,
         {"refused M1 2: no letter-probability matrix", "refused file 3: a MOTIF line without a name"}},
        {"log-odds alone",
         "MOTIF M\nlog-odds matrix: alength= 4 w= 1\n-1 2 -1 -1\n",
         Layout::meme,
         {"refused M 1: no letter-probability matrix, only log-odds"}},
        {"a row of three",
         "MOTIF M\nletter-probability matrix: alength= 4\n1 0 0 0\n1 0 0\n",
         Layout::meme,
         {"refused M 1: line 4: a position needs four values, not 3"}},
    });
}

TEST(ReadDownload, RefusesFilesInWords) {
    const std::vector<std::pair<std::string, const char*>> files = {
        {"", "the file is empty"},
        {" \r\n\n", "the file is empty"},
        {"<?xml version='1.0'?>\n<MEME>\n>M\n", "XML"},
        {"\xEF\xBB\xBF<!DOCTYPE html>\n<p>Not found</p>\n", "a web page"},
        {std::string(">M\0\n", 4), "not a text file"},
        {"\xFF\xFE>M", "UTF-16"},
        {"Dear reader,\nnothing is here.\n", "none of the layouts"},
        {"MEME version 4\n", "no motif in it"},
        {"MEME version 4\nALPHABET= ACDEFGHIKLMNPQRSTVWY\n", "the alphabet is not ACGT"},
        {"# nothing but a comment\n", "none of the layouts"},
    };
    for (const auto& [text, reason] : files) {
        const Download found = readText(text);
        EXPECT_TRUE(found.motifs.empty()) << text;
        ASSERT_EQ(found.refused.size(), 1U) << text;
        EXPECT_THAT(found.refused[0].reason, HasSubstr(reason));
        EXPECT_EQ(found.refused[0].line, 1U);
    }
}

TEST(ReadDownload, TakesBlocksOfVariousLayoutsFromOneFile) {
    const std::string mixed =
        ">M1 one\nA [ 1 2 ]\nC [ 0 0 ]\nG [ 0 0 ]\nT [ 0 0 ]\n\nDE two\n01 1 0 0 0 A\nXX\n\n>three\nACR\n\n"
        "1 2 3 4\n5 6 7 8\n\n\tMotif 5 position-specific probability matrix\nletter-probability matrix: "
        "alength= 4 w= 1\n0 0 1 0\n";
    const Download found = readText(mixed);
    EXPECT_TRUE(found.refused.empty());
    std::vector<std::string> ids;
    for (const DownloadedMotif& motif : found.motifs) ids.push_back(motif.id);
    EXPECT_EQ(ids, (std::vector<std::string>{"M1", "two", "three", "file", "5"}));
    EXPECT_FALSE(readText(mixed, Layout::jaspar).refused.empty()) << "the layout was named";
    EXPECT_EQ(readText(">M1\nA 1\nC 1\nG 1\nT 1\n\n>M2\n1 2 3 4\n1 2 3 4\n1 2 3 4\n").refused.size(), 1U)
        << "a damaged matrix of Jaspar is none of cluster-buster";
}

TEST(ReadDownload, ReadsLatin1AndKeepsUTF8) {
    EXPECT_EQ(readText(">M1 Kr\xFCppel\n1\n0\n0\n0\n").motifs[0].name, "Kr\xC3\xBCppel");
    EXPECT_EQ(readText(">M1 Kr\xC3\xBCppel\n1\n0\n0\n0\n").motifs[0].name, "Kr\xC3\xBCppel");
}

TEST(ReadDownload, NamesNamelessMotifsOfUnnamedInput) {
    EXPECT_EQ(readDownload("1\n0\n0\n0\n", "").motifs[0].id, "motif");
}

TEST(Layouts, HaveNames) {
    for (int layout = 0; layout <= static_cast<int>(Layout::columns); ++layout) {
        EXPECT_EQ(layoutOf(nameOf(static_cast<Layout>(layout))), static_cast<Layout>(layout));
    }
    EXPECT_STREQ(nameOf(Layout::cisbp), "cis-bp");
    EXPECT_EQ(layoutOf("Jaspar"), std::nullopt);
    EXPECT_EQ(layoutOf(""), std::nullopt);
}

}  // namespace varnolix::job
