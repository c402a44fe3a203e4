#include "job/command_line.h"

#include <CLI/CLI.hpp>
#include <functional>
#include <iostream>
#include <memory>
#include <optional>

#include "job/collections_command.h"
#include "job/convert_command.h"
#include "job/downloads/layouts.h"
#include "job/folder/installation.h"
#include "job/folder/job_folder.h"
#include "job/help_format.h"
#include "job/many/many_command.h"
#include "job/run/run_command.h"
#include "job/version/version_text.h"

namespace varnolix::job {

namespace {

constexpr int wrongUse = 2;
constexpr int mostListed = 50;
constexpr int mostAtOnce = 10'000;

/// Sets up a command; what it has to do once the arguments are known is left in `action`.
using Action = std::function<int()>;

/// The layout is looked up when the option is read, so that a wrong name is wrong use.
void addLayoutOption(CLI::App& command, std::optional<Layout>& layout) {
    command
        .add_option_function<std::string>(
            "--layout",
            [&layout](const std::string& name) {
                layout = layoutOf(name);
                if (!layout) throw CLI::ValidationError("--layout", "no layout is named " + name);
            },
            "Layout of the files: jaspar, meme, transfac, homer, hocomoco, cis-bp, uniprobe, cluster-buster, sites, "
            "consensus, rows or columns; otherwise told by their content")
        ->type_name("NAME");
}

/// @return 0 for all that the machine has
int threadsOf(const std::string& text) {
    if (text == "all" || text == "ALL") return 0;
    int count = 0;
    if (!CLI::detail::lexical_cast(text, count) || count < 1) {
        throw CLI::ValidationError("--threads", text + " is no number of threads");
    }
    return count;
}

void addFamilyOptions(CLI::App& run, RunOptions& options) {
    CLI::Option* families =
        run.add_flag("--families", options.findsFamilies, "Find families of motifs, with a common motif for each");
    run.add_option_function<std::string>(
           "--family-linkage", [&options](const std::string& name) { options.families.linkage = linkageOf(name); },
           "How families are joined: average (default), complete or single")
        ->type_name("LINKAGE")
        ->check(CLI::IsMember({"average", "complete", "single"}))
        ->needs(families);
    run.add_option("--family-cut", options.families.cut,
                   "Distance up to which motifs are of one family, 0 to 1 (default: 0.5)")
        ->type_name("D")
        ->check(CLI::Range(0.0, 1.0))
        ->needs(families);
    run.add_option("--family-flanks", options.families.flanks,
                   "Cut flanks of a common motif that a smaller share of its members covers, 0 to 1 (default: 1/3)")
        ->type_name("SHARE")
        ->check(CLI::Range(0.0, 1.0))
        ->needs(families);
}

CLI::App* addRunOptions(CLI::App& app, RunOptions& options) {
    CLI::App* run = app.add_subcommand("run", "Compare motifs, and write reports and tables into a new folder");
    run->add_option("FILE", options.files,
                    "Motif files in any layout, also compressed by gzip; a folder is one data set of all files in it; "
                    "- is standard input; NAME=FILE names the data set")
        ->required();
    run->add_option("-o,--output", options.folder, "Folder of the job (default: varnolix-DATE-NUMBER)")
        ->type_name("DIR");
    run->add_flag("--force", options.replaces, "Replace the job that the folder holds");
    addLayoutOption(*run, options.layout);
    run->add_flag("--skip-bad", options.skipsBad, "Leave out motifs that cannot be read, and list them in skipped.tsv");
    run->add_option("--trim", options.trimBits, "Cut flank columns of less information than this many bits")
        ->type_name("BITS")
        ->check(CLI::Range(0.0, 2.0));
    run->add_option("--top", options.topMotifs, "Number of top motifs (default: 10)")
        ->type_name("N")
        ->check(CLI::Range(1, mostListed));
    run->add_option("--best", options.bestMatches, "Number of best matches of a motif (default: 10)")
        ->type_name("N")
        ->check(CLI::Range(1, mostListed));
    run->add_option("--cutoff", options.cutoff,
                    "Least similarity: 0.5, 0.6, 0.7, 0.75, 0.8, 0.85 or 0.9 (default: 0.85)")
        ->type_name("C")
        ->check(CLI::IsMember({"0.5", "0.6", "0.7", "0.75", "0.8", "0.85", "0.9"}));
    run->add_option("--max-q", options.mostQ,
                    "Leave matches with a higher q-value out of the tables; the reports hold them all the same")
        ->type_name("Q")
        ->check(CLI::Range(0.0, 1.0));
    run->add_option_function<std::string>(
           "--threads", [&options](const std::string& text) { options.threads = threadsOf(text); },
           "Number of threads, or all, which is the default")
        ->type_name("N");
    run->add_option("--collection", options.collection,
                    "Reference collection: an installed name, a file or folder in any layout, or none (default)")
        ->type_name("NAME");
    run->add_option("--type", options.type, "Matches to report: all (default), or global-only: those across data sets")
        ->type_name("TYPE")
        ->check(CLI::IsMember({"all", "global-only"}));
    run->add_option("--format", options.format, "Format of the reports: text (default), html, pdf or all")
        ->type_name("FORMAT")
        ->check(CLI::IsMember({"text", "html", "pdf", "all"}));
    run->add_flag("--tree", options.drawsTree, "Draw the tree of the motifs");
    run->add_flag("--merge", options.merges, "Merge similar motifs");
    addFamilyOptions(*run, options);
    run->add_flag("-q,--quiet", options.isQuiet, "Print nothing but errors");
    return run;
}

void addRun(CLI::App& app, RunOptions& options, Action& action) {
    CLI::App* run = addRunOptions(app, options);
    run->callback([&options, &action] { action = [&options] { return runCommand(options); }; });
}

void addMany(CLI::App& app, ManyOptions& options, Action& action) {
    CLI::App* many = app.add_subcommand("many", "Run the jobs of a list, several at once, and collect their tables");
    many->add_option("JOBS", options.list,
                     "List of jobs, a table with tabs between the columns name, files, and options of run")
        ->required();
    many->add_option("-o,--output", options.folder, "Folder of all jobs (default: the list's name without extension)")
        ->type_name("DIR");
    many->add_option("--jobs", options.jobs, "Number of jobs at once (default: the number of processors)")
        ->type_name("N")
        ->check(CLI::Range(1, mostAtOnce));
    many->add_option("--threads", options.threads, "Threads of each job (default: processors / jobs; with --slurm 1)")
        ->type_name("N")
        ->check(CLI::Range(1, mostAtOnce));
    CLI::Option* slurm = many->add_flag("--slurm", options.writesArray,
                                        "Run nothing here: write an array for Slurm, and print how it is submitted");
    many->add_flag("--submit", options.submits, "Submit the array, too")->needs(slurm);
    many->add_option("--time", options.time, "Most time of a task, as Slurm takes it (default: estimated)")
        ->type_name("TIME")
        ->needs(slurm);
    many->add_option("--memory", options.memory, "Memory of a task, as Slurm takes it (default: estimated)")
        ->type_name("SIZE")
        ->needs(slurm);
    many->add_flag("-q,--quiet", options.isQuiet, "Print nothing but errors and the commands of Slurm");
    many->callback([&options, &action] { action = [&options] { return manyCommand(options, addRunOptions); }; });
}

void addCollect(CLI::App& app, std::string& folder, Action& action) {
    CLI::App* command = app.add_subcommand("collect", "Collect the tables of many jobs from what is there");
    command->add_option("DIR", folder, "Folder of all jobs")->required();
    command->callback([&folder, &action] { action = [&folder] { return collectCommand(folder); }; });
}

void addConvert(CLI::App& app, ConvertOptions& options, Action& action) {
    CLI::App* convert = app.add_subcommand("convert", "Print motifs of any layout in another one");
    convert->add_option("FILE", options.files, "Motif files in any layout; - is standard input")->required();
    convert->add_option("--to", options.to, "Layout to print: jaspar (default), meme, transfac or tsv")
        ->type_name("LAYOUT")
        ->check(CLI::IsMember({"jaspar", "meme", "transfac", "tsv"}));
    addLayoutOption(*convert, options.layout);
    convert->add_flag("--taxon", options.withTaxon, "Write the taxon, too, where the layout has a place for it");
    convert->add_flag("--skip-bad", options.skipBad, "Leave out motifs that cannot be read");
    convert->callback([&options, &action] { action = [&options] { return convertCommand(options); }; });
}

void addCollections(CLI::App& app, CollectionOptions& options, Action& action) {
    CLI::App* list = app.add_subcommand("collections", "List the reference collections, or install one");
    list->callback([&action, list] {
        if (list->get_subcommands().empty()) action = listCollections;
    });
    CLI::App* install = list->add_subcommand("install", "Install a reference collection from a download");
    install->add_option("NAME", options.name, "Name of the collection, as listed")->required();
    install->add_option("FILE", options.file, "Motif file in any layout, or a folder of such files")->required();
    install->add_option("--to", options.folder, "Job folder that gets it; otherwise it is there for all later jobs")
        ->type_name("DIR");
    addLayoutOption(*install, options.layout);
    install->callback([&options, &action] { action = [&options] { return installCommand(options); }; });
}

void addFolder(CLI::App& app, std::string& folder, Action& action) {
    CLI::App* command = app.add_subcommand("folder", "Make a job folder for the dialogue, and print its answers");
    command->add_option("DIR", folder, "Folder to make, or to complete")->required();
    command->callback([&folder, &action] {
        action = [&folder] {
            std::cout << describeJobFolder(makeJobFolder(folder, findInstallation()));
            return EXIT_SUCCESS;
        };
    });
}

}  // namespace

int runCommandLine(int argc, char** argv) {
    CLI::App app("Compare DNA sequence motifs", "varnolix-job");
    app.require_subcommand(1);
    app.set_version_flag("--version", versionText, "Print the versions of this program and of the outside tools");
    // Taken over by the commands that are added later.
    app.formatter(std::make_shared<HelpFormat>());
    app.get_formatter()->label("Positionals", "Arguments");
    app.get_formatter()->label("Subcommands", "Commands");
    app.footer("\nExit status: 0 if all is well, 1 for a refused or failed job, 2 for wrong use.");
    RunOptions run;
    ConvertOptions convert;
    CollectionOptions collection;
    ManyOptions many;
    std::string folder;
    run.arguments.assign(argv + 1, argv + argc);
    Action action;
    addRun(app, run, action);
    addMany(app, many, action);
    addCollect(app, folder, action);
    addConvert(app, convert, action);
    addCollections(app, collection, action);
    addFolder(app, folder, action);
    try {
        app.parse(argc, argv);
    } catch (const CLI::CallForHelp& help) {
        return app.exit(help);
    } catch (const CLI::CallForVersion& version) {
        return app.exit(version);
    } catch (const CLI::ParseError& error) {
        std::cerr << "varnolix-job: " << error.what() << "\nTry 'varnolix-job --help'.\n";
        return wrongUse;
    }
    return action();
}

}  // namespace varnolix::job
