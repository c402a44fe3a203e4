<?php
/**
 * Makes a PDF of a report page.
 *
 * The program writes a small script that loads this file from the job's working
 * folder and uses the class `Prince` as the wrapper of that closed program
 * offers it. Where Prince itself is installed, it makes the PDF; elsewhere the
 * first of headless Chromium and WeasyPrint that succeeds does. The PDF stands
 * beside the page, under the page's name with ".pdf". The log that the script
 * names tells which converter made it.
 *
 * The PDF converters get a fontconfig file of ours, and WeasyPrint a style
 * sheet, looked for as fonts/fonts.conf and fonts/paper.css below the folder
 * named by the environment variable VARNOLIX_TOOLS, then beside this file, then
 * in `tools` beside this file. Without them the PDF is made with the fonts and
 * on the paper that the converter takes by itself.
 *
 * Tested by tests/tools/test_prince.py.
 */

/** One run of an outside program, bounded in time. */
class BoundedRun
{
    public int $status;
    public string $messages;

    /** Runs `$command` (a list); what it says on either stream is kept. */
    public function __construct(array $command, int $seconds, array $environment)
    {
        $bounded = array_merge(['timeout', '--kill-after=10', (string)$seconds], $command);
        $output = tmpfile();
        $streams = [0 => ['file', '/dev/null', 'r'], 1 => $output, 2 => $output];
        $process = proc_open($bounded, $streams, $pipes, null, $environment);
        $this->status = is_resource($process) ? proc_close($process) : -1;
        rewind($output);
        $this->messages = stream_get_contents($output);
    }
}

class Prince
{
    private const CHROMIUM_NAMES = ['chromium', 'chromium-browser', 'google-chrome'];
    private const CHROMIUM_OPTIONS = [
        '--headless', '--no-sandbox', '--no-pdf-header-footer', '--disable-gpu',
        '--disable-quic', '--no-first-run', '--disable-background-networking',
        '--disable-component-update', '--disable-sync',
    ];
    private const CONVERTER_SECONDS = 3600;

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
     * Converts `$page`; says whether a PDF was made. `$messages` takes what there
     * is to say, each a list of type ("err", "wrn", "inf"), place and text.
     */
    public function convert_file($page, &$messages): bool
    {
        if (!is_file($page) || !is_readable($page)) {
            $this->report($messages, 'err', $page, 'cannot read the page');
            return false;
        }
        $page = realpath($page);
        foreach ($this->converters() as $name => $convert) {
            if ($convert($page, $messages)) {
                $this->writeLog("$page: converted by $name");
                return true;
            }
        }
        $this->report($messages, 'err', $page, 'no converter made a PDF');
        return false;
    }

    /** The converters at hand, best first: name => function of page and messages. */
    private function converters(): array
    {
        if (is_executable($this->executable)) {
            return ['Prince' => $this->convertWithPrince(...)];
        }
        $converters = [];
        $chromium = self::findCommand(self::CHROMIUM_NAMES);
        if ($chromium !== null) {
            $converters["Chromium ($chromium)"] =
                fn($page, &$messages) => $this->convertWithChromium($chromium, $page, $messages);
        }
        $weasyprint = self::findCommand(['weasyprint']);
        if ($weasyprint !== null) {
            $converters["WeasyPrint ($weasyprint)"] =
                fn($page, &$messages) => $this->convertWithWeasyPrint($weasyprint, $page, $messages);
        }
        return $converters;
    }

    private function convertWithPrince(string $page, &$messages): bool
    {
        $command = [$this->executable];
        if ($this->isHTML) {
            array_push($command, '-i', 'html');
        }
        $command[] = '--no-xinclude';
        if ($this->log !== '') {
            $command[] = "--log={$this->log}";
        }
        array_push($command, '--structured-log=normal', $page);
        $run = $this->run($command);
        $isSuccess = false;
        foreach (explode("\n", $run->messages) as $line) {
            $fields = explode('|', $line, 4);
            if ($fields[0] === 'msg' && count($fields) === 4) {
                $messages[] = array_slice($fields, 1);
            } elseif ($fields[0] === 'fin') {
                $isSuccess = trim($fields[1] ?? '') === 'success';
            }
        }
        return $isSuccess;
    }

    private function convertWithChromium(string $chromium, string $page, &$messages): bool
    {
        $profile = self::makeFolder();
        $homes = array_fill_keys(['HOME', 'XDG_CONFIG_HOME', 'XDG_CACHE_HOME'], $profile);
        $convert = fn($pdf) => $this->run(array_merge(
            [$chromium],
            self::CHROMIUM_OPTIONS,
            ["--user-data-dir=$profile", "--print-to-pdf=$pdf", self::fileAddress($page)]
        ), $homes);
        $isConverted = $this->convertAside('Chromium', $convert, $page, $messages);
        self::removeFolder($profile);
        return $isConverted;
    }

    private function convertWithWeasyPrint(string $weasyprint, string $page, &$messages): bool
    {
        // WeasyPrint does not shrink a page's tables to the paper, so the paper is made wide enough.
        $paper = self::findOwn('fonts/paper.css');
        $style = $paper === null ? [] : ['-s', $paper];
        $convert = fn($pdf) => $this->run([$weasyprint, '-p', ...$style, self::fileAddress($page), $pdf]);
        return $this->convertAside('WeasyPrint', $convert, $page, $messages);
    }

    /**
     * Lets `$convert` write a PDF under another name and puts it in place if it is
     * one. Chromium's exit status says nothing, so the file itself is looked at.
     */
    private function convertAside(string $name, callable $convert, string $page, &$messages): bool
    {
        $pdf = self::pdfName($page);
        $newborn = "$pdf." . getmypid() . '.pdf';
        $run = $convert($newborn);
        if (self::isWholePDF($newborn)) {
            return rename($newborn, $pdf);
        }
        if (file_exists($newborn)) {
            unlink($newborn);
        }
        $lastWords = implode("\n", array_slice(explode("\n", trim($run->messages)), -3));
        $this->report($messages, 'wrn', $page,
            "$name made no PDF (status {$run->status}): $lastWords");
        return false;
    }

    /** Runs a converter with our fonts and with `$settings` in its environment. */
    private function run(array $command, array $settings = []): BoundedRun
    {
        $environment = array_merge(getenv(), $settings);
        $fonts = self::findOwn('fonts/fonts.conf');
        if ($fonts !== null) {
            $environment['FONTCONFIG_FILE'] = $fonts;
        }
        return new BoundedRun($command, self::CONVERTER_SECONDS, $environment);
    }

    private function report(&$messages, string $type, string $place, string $text): void
    {
        $messages[] = [$type, $place, $text];
        $this->writeLog("$place: $type: $text");
    }

    private function writeLog(string $line): void
    {
        if ($this->log !== '') {
            file_put_contents($this->log, date('Y-m-d H:i:s ') . "$line\n", FILE_APPEND);
        }
    }

    /** The full path of a file of ours that the converters use. */
    private static function findOwn(string $name): ?string
    {
        foreach ([getenv('VARNOLIX_TOOLS'), __DIR__, __DIR__ . '/tools'] as $folder) {
            if ($folder && is_readable("$folder/$name")) {
                return "$folder/$name";
            }
        }
        return null;
    }

    /** The full path of the first of `$names` that stands on PATH. */
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

    private static function makeFolder(): string
    {
        $folder = sys_get_temp_dir() . '/varnolix-chromium-' . bin2hex(random_bytes(8));
        mkdir($folder, 0700);
        return $folder;
    }

    private static function removeFolder(string $folder): void
    {
        new BoundedRun(['rm', '-rf', '--', $folder], 60, getenv());
    }
}
