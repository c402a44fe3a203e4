#include "tree/tree_plot.h"

#include <fstream>
#include <iostream>

#include "run/system/output_file.h"
#include "run/system/outside_text.h"
#include "run/system/outside_tool.h"
#include "tree/distance_table.h"

namespace varnolix {

std::string plotScript(const std::string& tablePath, const std::string& imagePath) {
    return "options(warn = -1)\n"
           "suppressMessages(require(ggplot2))\n"
           "suppressMessages(require(ggdendro))\n"
           "suppressMessages(require(dendextend))\n"
           "suppressMessages(library(ape))\n"
           "\n"
           "tb = read.csv('" +
           insideQuotes(tablePath) +
           "', row.names = 1)\n"
           "d = as.dist(tb)\n"
           "hc <- as.dendrogram(hclust(d))\n"
           "colors = c('red', 'blue', 'green4', 'black', 'brown', 'magenta', 'purple', 'darkorange', 'deepskyblue', "
           "'darkgreen')\n"
           "clus10 = cutree(hc, 10)\n"
           "png('" +
           insideQuotes(imagePath) +
           "', width=700, height=700)\n"
           "plot(as.phylo(hc), type = 'fan', tip.color = colors[clus10], cex = 0.7, label.offset = 0.05)\n"
           "invisible(dev.off())\n"
           "options(warn = 0)\n";
}

void drawTree(DistanceTable& table, const TreeFiles& files) {
    const std::string tablePath = outputPath + files.table;
    const std::string scriptPath = outputPath + files.script;
    const std::string imagePath = outputPath + files.image;
    // From here on, an interrupt waits until the table and the script are complete.
    ToolWork work({});
    std::ofstream stream;
    openOutput(stream, tablePath);
    writeDistanceTable(stream, table, files.letter);
    closeOutput(stream, tablePath);
    table = {};
    openOutput(stream, scriptPath);
    stream << plotScript(tablePath, imagePath);
    closeOutput(stream, scriptPath);
    refuseLink(imagePath);
    // R prints to the same console, so our own text has to come out first.
    std::cout << std::flush;
    work.run("Rscript " + shellWord(scriptPath), imagePath);
}

}  // namespace varnolix
