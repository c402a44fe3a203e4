<?php
/**
 * Makes a PDF of a report page.
 *
 * The program writes a small script that loads this file from the job's working
 * folder and uses the class `Prince`, which has the interface of the PHP wrapper
 * of Prince, a closed program. If Prince itself is installed, it makes the PDF;
 * otherwise headless Chromium does, or WeasyPrint if Chromium fails. The PDF is
 * put beside the page, under the page's name with ".pdf", and appears there only
 * when it is complete. The log named by the script says which converter made it.
 *
 * Chromium and WeasyPrint never get the page itself. They get a copy in a new
 * temporary folder; the copy contains our style sheet and the page's pictures,
 * and may load nothing and run no script. So only the contents of the page's
 * folder can get into a PDF, whatever the names of motifs contain, and it does
 * not matter how a converter would turn the path of a job into an address.
 *
 * The converters also get our own fontconfig file. This file and the style sheet,
 * fonts/fonts.conf and fonts/paper.css, are looked for first in the folder named
 * by the environment variable VARNOLIX_TOOLS, then beside this file, then in
 * `tools` beside this file. Without them the converter chooses fonts and paper.
 *
 * Tested by tests/tools/test_prince.py.
 */

/**
 * A signal that asks this process to end, held back until it is safe to obey.
 *
 * First the converter must end and the temporary files must be removed. Without
 * PHP's extension for signals (Debian's php-cli has it) the process ends at once.
 */
class Interruption
{
    private const SIGNALS = ['HUP' => 1, 'INT' => 2, 'QUIT' => 3, 'TERM' => 15];

    private static int $received = 0;
    private static array $watched = [];

    public static function watch(): void
    {
        if (!function_exists('pcntl_signal') || !function_exists('posix_kill')) {
            return;
        }
        pcntl_async_signals(true);
        $ignored = self::ignoredSignals();
        foreach (self::SIGNALS as $signal) {
            // Signals that the caller ignores, as nohup does, stay ignored.
            if (($ignored >> ($signal - 1) & 1) === 0) {
                self::$watched[] = $signal;
                pcntl_signal($signal, static function (int $signal): void {
                    self::$received = $signal;
                });
            }
        }
    }

    public static function hasCome(): bool
    {
        return self::$received !== 0;
    }

    /** Stops watching, and ends this process by the signal that has arrived, if any. */
    public static function follow(): void
    {
        foreach (self::$watched as $signal) {
            pcntl_signal($signal, SIG_DFL);
        }
        self::$watched = [];
        if (self::hasCome()) {
            posix_kill(getmypid(), self::$received);
        }
    }

    /** The signals that this process was told to ignore when it started, as a bit mask; bit 0 is signal 1. */
    private static function ignoredSignals(): int
    {
        $status = is_readable('/proc/self/status') ? file_get_contents('/proc/self/status') : '';
        return preg_match('/^SigIgn:\s*([0-9a-f]+)/m', $status, $found) ? (int)hexdec(substr($found[1], -4)) : 0;
    }
}

/** One run of an outside program with a time limit. */
class BoundedRun
{
    private const LOOK_EVERY = 20_000;   // microseconds

    public int $status = -1;
    public string $messages;

    /**
     * Runs `$command` (a list) and keeps what it prints on either stream. If this
     * process is asked to end, the command and all its processes are ended early.
     */
    public function __construct(array $command, int $seconds, array $environment)
    {
        $bounded = array_merge(['timeout', '--kill-after=10', (string)$seconds], $command);
        $output = tmpfile();
        $streams = [0 => ['file', '/dev/null', 'r'], 1 => $output, 2 => $output];
        $process = proc_open($bounded, $streams, $pipes, null, $environment);
        if (is_resource($process)) {
            $this->status = self::waitFor($process);
        }
        rewind($output);
        $this->messages = stream_get_contents($output);
    }

    /** The exit status. `timeout` leads a process group, so all processes can be ended together. */
    private static function waitFor($process): int
    {
        $isEnding = false;
        while (($state = proc_get_status($process))['running']) {
            if (Interruption::hasCome() && !$isEnding) {
                // `timeout` passes the signal on and kills what is still running ten seconds later.
                $isEnding = proc_terminate($process);
            }
            usleep(self::LOOK_EVERY);
        }
        if (function_exists('posix_kill')) {
            posix_kill(-$state['pid'], 9);
        }
        proc_close($process);
        return $state['exitcode'];
    }
}

class Prince
{
    private const CHROMIUM_NAMES = ['chromium', 'chromium-browser', 'google-chrome'];
    // The proxy is a port on which nothing listens; it is used for addresses of this machine too.
    private const CHROMIUM_OPTIONS = [
        '--headless', '--no-pdf-header-footer', '--disable-gpu', '--disable-quic',
        '--no-first-run', '--disable-background-networking', '--disable-component-update',
        '--disable-sync', '--disable-breakpad', '--proxy-server=http://127.0.0.1:1',
        '--proxy-bypass-list=<-loopback>', '--host-resolver-rules=MAP * ~NOTFOUND',
    ];

    // Chromium makes a socket several folders below, and the path of a socket has at most 107 bytes.
    private const CHROMIUM_LONGEST_TEMPORARY = 60;

    // The command of WeasyPrint cannot restrict what is loaded, but its library can.
    private const WEASYPRINT_PROGRAM = <<<'PYTHON'
        import sys
        import weasyprint

        def fetch(address, *arguments, **settings):
            if not address.startswith("data:"):
                raise ValueError("not a part of the page")
            return weasyprint.default_url_fetcher(address, *arguments, **settings)

        with open(sys.argv[1], "rb") as page:
            document = weasyprint.HTML(file_obj=page, encoding="utf-8", url_fetcher=fetch)
        document.write_pdf(sys.argv[2], presentational_hints=True)
        PYTHON;

    // WeasyPrint, the slower one, took 33 seconds per megabyte, and 315 when it shared the processors with ten others.
    private const LEAST_SECONDS = 120;
    private const SECONDS_PER_MEGABYTE = 1200;

    private string $executable;
    private bool $isHTML = false;
    private string $log = '';

    public function __construct(string $executable)
    {
        $this->executable = $executable;
    }

    public function setHTML($isHTML): void
    {
        $this->isHTML = (bool)$isHTML;
    }

    public function setLog($log): void
    {
        $this->log = $log;
    }

    /**
     * Converts `$page` and returns whether a PDF was made. Messages are added to
     * `$messages`, each as a list of type ("err", "wrn", "inf"), place and text.
     */
    public function convert_file($page, &$messages): bool
    {
        if (!is_file($page) || !is_readable($page)) {
            $this->report($messages, 'err', $page, 'cannot read the page');
            return false;
        }
        Interruption::watch();
        $isConverted = $this->convertWithFirst(realpath($page), $messages);
        Interruption::follow();
        return $isConverted;
    }

    private function convertWithFirst(string $page, &$messages): bool
    {
        foreach ($this->converters() as $name => $convert) {
            if ($this->convertAside($name, $convert, $page, $messages)) {
                $this->writeLog("$page: converted by $name");
                return true;
            }
            if (Interruption::hasCome()) {
                $this->report($messages, 'err', $page, 'interrupted');
                return false;
            }
        }
        $this->report($messages, 'err', $page, 'no converter made a PDF');
        return false;
    }

    /**
     * The available converters, best first: name => function that makes a PDF of a
     * page. It gets a folder for its own use.
     */
    private function converters(): array
    {
        if (is_executable($this->executable)) {
            return ['Prince' => $this->convertWithPrince(...)];
        }
        $converters = [];
        $chromium = self::findCommand(self::CHROMIUM_NAMES);
        if ($chromium !== null) {
            $converters["Chromium ($chromium)"] =
                fn($page, $folder, $pdf) => $this->convertWithChromium($chromium, $page, $folder, $pdf);
        }
        $weasyprint = self::findCommand(['weasyprint']);
        if ($weasyprint !== null) {
            $converters["WeasyPrint ($weasyprint)"] =
                fn($page, $folder, $pdf) => $this->convertWithWeasyPrint($weasyprint, $page, $folder, $pdf);
        }
        return $converters;
    }

    /** Prince gets the page itself: it runs scripts only on request, and needs no style sheet for the paper. */
    private function convertWithPrince(string $page, string $folder, string $pdf, &$messages): BoundedRun
    {
        $command = [$this->executable];
        if ($this->isHTML) {
            array_push($command, '-i', 'html');
        }
        $command[] = '--no-xinclude';
        if ($this->log !== '') {
            $command[] = "--log={$this->log}";
        }
        array_push($command, '--structured-log=normal', $page, '-o', $pdf);
        $run = $this->run($command, $page, $folder);
        $isSuccess = false;
        foreach (explode("\n", $run->messages) as $line) {
            $fields = explode('|', $line, 4);
            if ($fields[0] === 'msg' && count($fields) === 4) {
                $messages[] = array_slice($fields, 1);
            } elseif ($fields[0] === 'fin') {
                $isSuccess = trim($fields[1] ?? '') === 'success';
            }
        }
        if (!$isSuccess && file_exists($pdf)) {
            unlink($pdf);
        }
        return $run;
    }

    private function convertWithChromium(string $chromium, string $page, string $folder, string $pdf): BoundedRun
    {
        $options = self::CHROMIUM_OPTIONS;
        if (getenv('VARNOLIX_PDF_TAGS') !== 'yes') {
            // Tags for screen readers take nearly half of the time and add half of the file to a large page.
            $options[] = '--disable-pdf-tagging';
        }
        if (function_exists('posix_geteuid') && posix_geteuid() === 0) {
            $options[] = '--no-sandbox';   // Chromium refuses to run as root otherwise
        }
        $homes = array_fill_keys(['HOME', 'XDG_CONFIG_HOME', 'XDG_CACHE_HOME'], $folder);
        if (strlen($folder) > self::CHROMIUM_LONGEST_TEMPORARY) {
            $homes['TMPDIR'] = '/tmp';
        }
        $address = self::fileAddress(self::writeCopy($page, $folder));
        return $this->run(
            [$chromium, ...$options, "--user-data-dir=$folder/profile", "--print-to-pdf=$pdf", $address],
            $page, $folder, $homes);
    }

    private function convertWithWeasyPrint(string $weasyprint, string $page, string $folder, string $pdf): BoundedRun
    {
        $copy = self::writeCopy($page, $folder);
        $command = [...self::pythonOf($weasyprint), '-c', self::WEASYPRINT_PROGRAM, $copy, $pdf];
        return $this->run($command, $page, $folder);
    }

    /**
     * Lets `$convert` write a PDF into a temporary folder, and puts the file in place
     * if it is a PDF. This is checked in the file, as no converter's exit status is
     * reliable.
     */
    private function convertAside(string $name, callable $convert, string $page, &$messages): bool
    {
        $folder = sys_get_temp_dir() . '/varnolix-' . bin2hex(random_bytes(4));
        if (!@mkdir($folder, 0700)) {
            $this->report($messages, 'err', $page, "cannot make the temporary folder $folder");
            return false;
        }
        $newborn = "$folder/page.pdf";
        try {
            $run = $convert($page, $folder, $newborn, $messages);
            if (self::isWholePDF($newborn)) {
                self::moveInto($newborn, self::pdfName($page));
                return true;
            }
            $lastWords = implode("\n", array_slice(explode("\n", trim($run->messages)), -3));
            $this->report($messages, 'wrn', $page, "$name made no PDF (status {$run->status}): $lastWords");
        } catch (RuntimeException $error) {
            $this->report($messages, 'err', $page, $error->getMessage());
        } finally {
            self::removeFolder($folder);
        }
        return false;
    }

    /**
     * Puts the finished PDF in its place, where it appears all at once. It is first
     * copied into the target's folder under a random name, so that nobody can have
     * put a link there before.
     */
    private static function moveInto(string $newborn, string $pdf): void
    {
        $part = "$pdf." . bin2hex(random_bytes(8)) . '.part';
        $from = fopen($newborn, 'r');
        $to = @fopen($part, 'x');
        $isCopied = $to !== false && @stream_copy_to_stream($from, $to) === filesize($newborn) && fclose($to);
        if (!$isCopied || !@rename($part, $pdf)) {
            if ($to !== false) {
                unlink($part);
            }
            throw new RuntimeException("cannot write $pdf");
        }
    }

    /**
     * Writes the page's copy for the converters into `$folder` and returns its path.
     * The copy begins with a policy that only allows what the page itself contains.
     * So pictures are copied into it, but only those from the page's folder.
     */
    private static function writeCopy(string $page, string $folder): string
    {
        $paper = self::findOwn('fonts/paper.css');
        $style = $paper === null ? '' : file_get_contents($paper);
        $copy = "$folder/page.html";
        $from = fopen($page, 'r');
        $to = fopen($copy, 'x');
        $isWritten = self::write($to, '<meta charset="utf-8"><meta http-equiv="Content-Security-Policy" '
            . "content=\"default-src 'none'; img-src data:; style-src 'unsafe-inline'\">\n<style>\n$style</style>\n");
        while ($isWritten && ($line = fgets($from)) !== false) {
            // The only meta element of our pages names their encoding; another one could redirect the converter.
            $line = preg_replace('/<(?=meta\b)(?!meta http-equiv="Content-Type")/i', '&lt;', $line);
            $isWritten = self::write($to, preg_replace_callback(
                "/(?<=<img src = ')[^']*(?=')/",
                fn($found) => self::pictureInPlace($found[0], dirname($page)),
                $line
            ));
        }
        fclose($from);
        if (!fclose($to) || !$isWritten) {
            throw new RuntimeException("cannot write $copy");
        }
        return $copy;
    }

    private static function write($stream, string $text): bool
    {
        return @fwrite($stream, $text) === strlen($text);
    }

    /** A picture below `$folder` as a data address that contains it, or `$source` if there is no such picture. */
    private static function pictureInPlace(string $source, string $folder): string
    {
        $path = realpath("$folder/" . html_entity_decode($source, ENT_QUOTES | ENT_HTML5));
        if ($path === false || !str_starts_with($path, rtrim($folder, '/') . '/') || !is_file($path)) {
            return $source;
        }
        $picture = file_get_contents($path);
        foreach (['jpeg' => "\xFF\xD8\xFF", 'png' => "\x89PNG"] as $kind => $start) {
            if (str_starts_with($picture, $start)) {
                return "data:image/$kind;base64," . base64_encode($picture);
            }
        }
        return $source;
    }

    /**
     * Runs a converter with our fonts, with `$settings` in its environment, and with
     * `$folder` for its temporary files. A larger page gets more time.
     */
    private function run(array $command, string $page, string $folder, array $settings = []): BoundedRun
    {
        $environment = array_merge(getenv(), ['TMPDIR' => $folder], $settings);
        $fonts = self::findOwn('fonts/fonts.conf');
        if ($fonts !== null) {
            $environment['FONTCONFIG_FILE'] = $fonts;
        }
        $seconds = self::LEAST_SECONDS + intdiv(self::SECONDS_PER_MEGABYTE * filesize($page), 1_000_000);
        return new BoundedRun($command, $seconds, $environment);
    }

    private function report(&$messages, string $type, string $place, string $text): void
    {
        $messages[] = [$type, $place, $text];
        $this->writeLog("$place: $type: $text");
    }

    private function writeLog(string $line): void
    {
        if ($this->log !== '') {
            // The program may run this script for several pages at the same time, with one log for all.
            file_put_contents($this->log, date('Y-m-d H:i:s ') . "$line\n", FILE_APPEND | LOCK_EX);
        }
    }

    /** The full path of one of our own files for the converters. */
    private static function findOwn(string $name): ?string
    {
        foreach ([getenv('VARNOLIX_TOOLS'), __DIR__, __DIR__ . '/tools'] as $folder) {
            if ($folder && is_readable("$folder/$name")) {
                return "$folder/$name";
            }
        }
        return null;
    }

    /** The full path of the first of `$names` that is found on PATH. */
    private static function findCommand(array $names): ?string
    {
        foreach ($names as $name) {
            foreach (explode(':', getenv('PATH') ?: '/usr/bin:/bin') as $folder) {
                if (is_file("$folder/$name") && is_executable("$folder/$name")) {
                    return "$folder/$name";
                }
            }
        }
        return null;
    }

    /** The Python with which the installed WeasyPrint runs, according to the first line of its command. */
    private static function pythonOf(string $weasyprint): array
    {
        $isTold = preg_match('/^#! *(\S*(?:env +)?\S*python\S*)/', fgets(fopen($weasyprint, 'r')), $found);
        return $isTold ? preg_split('/ +/', $found[1]) : ['python3'];
    }

    private static function pdfName(string $page): string
    {
        return preg_replace('/\.[^.\/]*$/', '', $page) . '.pdf';
    }

    private static function isWholePDF(string $path): bool
    {
        if (!is_file($path)) {
            return false;
        }
        $size = filesize($path);
        return file_get_contents($path, false, null, 0, 5) === '%PDF-'
            && str_contains(file_get_contents($path, false, null, max(0, $size - 64)), '%%EOF');
    }

    private static function fileAddress(string $path): string
    {
        return 'file://' . implode('/', array_map('rawurlencode', explode('/', $path)));
    }

    /** Removes a temporary folder; the last process of a converter may still be writing for a moment. */
    private static function removeFolder(string $folder): void
    {
        for ($tries = 0; $tries < 40 && is_dir($folder); $tries++) {
            if ($tries > 0) {
                usleep(50_000);
            }
            self::removeEntry($folder);
        }
    }

    private static function removeEntry(string $path): void
    {
        if (is_link($path) || !is_dir($path)) {
            @unlink($path);
            return;
        }
        foreach (array_diff(@scandir($path) ?: [], ['.', '..']) as $name) {
            self::removeEntry("$path/$name");
        }
        @rmdir($path);
    }
}
