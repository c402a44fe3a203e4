#!/usr/bin/env bash
# Proves that the tools for VARNOLIX work on this machine: compiles and runs a small program, draws one logo,
# makes one PDF file and draws one tree.
#
#   prove.sh          all four
#   prove.sh --text   the compiler only
#
# For each it prints "ok", or "FAILED" and where to look. The exit status is 0 if all are ok. setup.sh runs this
# at its end.
# shellcheck disable=SC2317  # the prove_ functions are called through assembled names
set -euo pipefail
here="$(cd "$(dirname "${BASH_SOURCE[0]}")" && pwd)"
# shellcheck source=common.sh
source "$here/common.sh"

# Seconds that a tool may take; even a slow first start of R or Chromium takes far less.
limit=60

prove_compiler() {
    cat > threads.cpp <<'END'
#include <omp.h>

#include <cstdio>
#include <vector>

int main()
{
    std::vector<int> seen(2, 0);
#pragma omp parallel num_threads(2)
    seen.at(static_cast<unsigned>(omp_get_thread_num())) = 1;
    return std::puts("compiled") < 0 || seen.front() != 1;
}
END
    c++ -std=c++20 -fopenmp threads.cpp -o threads
    ./threads | grep -q compiled
    cmake --version > cmake.txt
    ninja --version > ninja.txt
}

prove_logo() {
    {
        echo "PO A C G T "
        echo "1 0.9 0.05 0.05 0 "
        echo "2 0 0.5 0.5 0 "
        echo "3 0.1 0.2 0.3 0.4 "
    } > matrix.txt
    # The logo must be drawn now, not taken from the store.
    VARNOLIX_LOGO_STORE=no "$project/tools/weblogo-3.4/weblogo" --format jpeg --sequence-type dna --units bits --composition none \
        --first-index 1 --size medium --stacks-per-line 80 --show-xaxis YES --show-yaxis YES --ticmarks 1.0 \
        --errorbars NO --stack-width 20 --resolution 96 --scale-width yes --color-scheme classic \
        --color green A 'Adenine' --color blue C 'Cytosine' --color orange G 'Guanine' --color red T 'Thymine' \
        < matrix.txt > logo.jpeg
    [[ $(head -c 3 logo.jpeg | od -An -tx1 | tr -d ' ') == ffd8ff ]]
}

prove_pdf() {
    echo "<html><body><p>The page of the proof.</p></body></html>" > page.html
    cp "$project/tools/prince.php" .
    cat > page.php <<END
<?php
require '$PWD/prince.php';
\$prince = new Prince('/usr/local/bin/prince');
\$prince->setHTML(TRUE);
\$prince->setLog('prince.log');
\$msgs = array();
if(!\$prince->convert_file('$PWD/page.html', \$msgs)) { var_dump(\$msgs); exit(1); }
?>
END
    php5 page.php
    [[ $(head -c 5 page.pdf) == "%PDF-" ]]
    tail -c 16 page.pdf | grep -aq "%%EOF"
    # Only the tests need pdftotext, so it may be missing.
    ! command -v pdftotext || pdftotext page.pdf - | grep -q "The page of the proof."
}

prove_tree() {
    local names=(a b c d e f g h i j k l) i j
    {
        printf '"",'; printf '%s,' "${names[@]}"; echo
        for i in "${!names[@]}"; do
            printf '%s,' "${names[i]}"
            for j in "${!names[@]}"; do
                printf '%d,' "$(( i > j ? i * i - j * j : j * j - i * i ))"
            done
            echo
        done
    } > table.csv
    cat > tree.R <<END
options(warn = -1)
suppressMessages(require(ggplot2))
suppressMessages(require(ggdendro))
suppressMessages(require(dendextend))
suppressMessages(library(ape))
tb = read.csv('$PWD/table.csv', row.names = 1)
hc <- as.dendrogram(hclust(as.dist(tb)))
clus10 = cutree(hc, 10)
png('$PWD/tree.png', width=700, height=700)
plot(as.phylo(hc), type = 'fan', tip.color = rainbow(10)[clus10], cex = 0.7, label.offset = 0.05)
invisible(dev.off())
END
    Rscript tree.R
    [[ $(head -c 4 tree.png | tail -c 3) == PNG ]]
}

# prove NAME HINT: runs prove_NAME in a folder of its own. It calls this script again, as timeout can only run programs.
prove() {
    local name=$1 hint=$2 folder="$work/$1"
    mkdir "$folder"
    if timeout "$limit" bash "$here/prove.sh" --inside "$folder" "$name" > "$folder/log" 2>&1 < /dev/null; then
        printf '  %-10s ok\n' "$name"
        return 0
    fi
    printf '  %-10s FAILED: look at %s\n' "$name" "$hint"
    tail -n 5 "$folder/log" | sed 's/^/             | /'
    return 1
}

only_text=false
case ${1:-} in
    "") ;;
    --text) only_text=true ;;
    --inside) cd "$2"; "prove_$3"; exit 0 ;;
    --help) usage_of "$0"; exit 0 ;;
    *) wrong_use "unknown option $1" ;;
esac

work="$(mktemp -d)"
trap 'rm -rf "$work"' EXIT
export PATH="$project/tools/bin:$PATH" VARNOLIX_TOOLS="$project/tools"
if [[ -d $r_library ]]; then
    export R_LIBS="$r_library${R_LIBS:+:$R_LIBS}"
fi

say "Proof"
failed=0
prove compiler "the packages g++, cmake and ninja-build" || failed=1
if ! $only_text; then
    prove logo "the packages python3-weblogo and ghostscript, and tools/weblogo-3.4/weblogo" || failed=1
    prove pdf "the packages php-cli and weasyprint (or chromium), and tools/prince.php" || failed=1
    prove tree "the packages r-base-core and r-cran-ape, and r-cran-dendextend or its stand-in" || failed=1
fi
exit "$failed"
