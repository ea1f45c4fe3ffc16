// End-to-end test of `qrv-widgets serve` in a real browser (Debian's chromium,
// driven by playwright-core, never a downloaded browser):
//   1. two taps on the water button add two increments to the day's total;
//   2. a calories record written into the container shows up by itself;
//   3. with the clock moved to just before midnight, the calories and
//      macronutrient widgets roll over to the new day's figures and water to 0.
// Texts are read from the data the page puts on each widget, not from pixels.
// A screenshot goes to the output directory when a step fails.
//
//   node run.mjs --qrv-widgets PATH [--out DIR]
//
// Exits 77 (skipped) when chromium or node_modules are missing.
import { spawn, execFileSync } from "node:child_process";
import { existsSync, mkdtempSync, rmSync, mkdirSync } from "node:fs";
import { tmpdir } from "node:os";
import path from "node:path";
import { fileURLToPath } from "node:url";

const here = path.dirname(fileURLToPath(import.meta.url));
const SKIP = 77;
const CHROMIUM = "/usr/bin/chromium";

function argument(name, fallback) {
  const index = process.argv.indexOf(name);
  return index > 0 && index + 1 < process.argv.length ? process.argv[index + 1] : fallback;
}
const program = argument("--qrv-widgets");
const outDir = path.resolve(argument("--out", path.join(here, "..", "..", "build", "e2e")));
if (!program || !existsSync(program)) {
  console.error(`e2e: qrv-widgets not found: ${program}`);
  process.exit(1);
}
if (!existsSync(CHROMIUM)) {
  console.log(`e2e: skipped, ${CHROMIUM} is not installed (scripts/install-deps installs it)`);
  process.exit(SKIP);
}
if (!existsSync(path.join(here, "node_modules", "playwright-core"))) {
  console.log("e2e: skipped, tests/e2e/node_modules is missing (scripts/install-deps runs npm install)");
  process.exit(SKIP);
}
const { chromium } = await import("playwright-core");

const work = mkdtempSync(path.join(tmpdir(), "qrv-e2e-"));
const container = path.join(work, "container");
const profile = path.join(work, "chromium-profile");
mkdirSync(container, { recursive: true });

function writeRecords(records) {
  const pairs = Object.entries(records).map(([key, value]) => `${key}=${JSON.stringify(value)}`);
  execFileSync("python3", [path.join(here, "write_records.py"), container, ...pairs]);
}
// Dates travel as seconds since 2001-01-01 UTC.
const nowReference = () => Date.now() / 1000 - 978307200;
// A subtitle with markup in it must come out as text.
const trickySubtitle = 'Left <b id="injected">today</b> & "then"';
function calories(consumed, remaining, subtitle = "Remaining") {
  return {
    date: nowReference(), isLoggedIn: true, shouldShowBarcodeButton: true,
    energyUnitTitle: "cals", condensedEnergyUnitTitle: "cal",
    goalTitle: "Base Goal", goal: "2,000", goalAdjustedForExercise: "2,320",
    consumedTitle: "Food", consumed, exerciseTitle: "Exercise", exercise: "320",
    remaining, subtitle, progress: 0.6, reverseProgress: 0.16, exerciseProgress: 0.16,
  };
}
writeRecords({
  CaloriesData: calories("1,250", "1,070"),
  MacronutrientsData: {
    date: nowReference(), isLoggedIn: true,
    values: [0, { title: "Carbs", maxValue: 250, value: 142, type: 0 },
      1, { title: "Fat", maxValue: 67, value: 74.5, type: 1 },
      2, { title: "Protein", maxValue: 100, value: 88, type: 2 }],
  },
  WaterEntryData: { date: nowReference(), isLoggedIn: true, waterValue: 1250, waterUnit: "ml" },
});

// The server, on a free loopback port, in a fixed zone so that midnight is known.
const server = spawn(program, ["serve", "--port", "0", "--container", container, "--scheme", "light", "--locale", "en_US",
  "--os", "18"], {
  env: { ...process.env, TZ: "UTC", XDG_DATA_HOME: path.join(work, "data"), QRV_APP_GROUP_CONTAINER: "" },
  stdio: ["ignore", "pipe", "inherit"],
});
let serverOutput = "";
const url = await new Promise((resolve, reject) => {
  const timer = setTimeout(() => reject(new Error(`the server did not say where it listens:\n${serverOutput}`)), 60000);
  server.stdout.on("data", (chunk) => {
    serverOutput += chunk;
    const match = /Serving the widgets on (http:\/\/127\.0\.0\.1:\d+\/)/.exec(serverOutput);
    if (match) { clearTimeout(timer); resolve(match[1]); }
  });
  server.on("exit", (code) => reject(new Error(`the server ended (${code}):\n${serverOutput}`)));
});
console.log(`e2e: server at ${url}`);

const context = await chromium.launchPersistentContext(profile, {
  executablePath: CHROMIUM,
  headless: true,
  args: ["--no-sandbox", "--disable-gpu", "--disable-quic", "--no-first-run", "--disable-background-networking",
    "--disable-component-update", "--disable-sync"],
  viewport: { width: 1100, height: 900 },
});
const page = context.pages()[0] || await context.newPage();
const problems = [];
page.on("pageerror", (error) => problems.push(`page error: ${error.message}`));

// "texts": as drawn (cut short with "…" where they do not fit); "givenTexts": as the record gave them.
const texts = (id, field) => page.$eval(`figure[data-id="${id}"]`,
  (figure, key) => JSON.parse(figure.dataset[key] || "[]"), field);
async function waitForTexts(id, expected, what, timeout = 15000, field = "texts") {
  try {
    await page.waitForFunction(([widgetId, wanted, key]) => {
      const figure = document.querySelector(`figure[data-id="${widgetId}"]`);
      if (!figure || !figure.dataset[key]) return false;
      const shown = JSON.parse(figure.dataset[key]);
      return wanted.every((text) => shown.includes(text));
    }, [id, expected, field], { timeout, polling: 200 });
  } catch (error) {
    throw new Error(`${what}: ${id} shows ${JSON.stringify(await texts(id, field).catch(() => []))}, ` +
      `expected ${JSON.stringify(expected)}`);
  }
}

let failed = false;
const step = async (name, body) => {
  if (failed) return;
  try {
    await body();
    console.log(`e2e: ok   ${name}`);
  } catch (error) {
    failed = true;
    console.error(`e2e: FAIL ${name}\n${error.stack || error}`);
  }
};

await step("the page shows every widget from its records", async () => {
  await page.goto(url);
  await waitForTexts("water-systemSmall", ["1250 ml"], "water before any tap");
  await waitForTexts("calories-systemSmall", ["1,070", "Remaining"], "calories from the record");
  await waitForTexts("macronutrients-accessoryInline", ["Carbs 142g / Fat 74g / Protein 88g"], "macronutrients");
});

await step("two taps on the water button add two increments", async () => {
  const button = page.locator('figure[data-id="water-systemSmall"] button.intent');
  await button.click();
  await waitForTexts("water-systemSmall", ["1500 ml"], "after one tap");
  await button.click();
  await waitForTexts("water-systemSmall", ["1750 ml"], "after two taps");
});

await step("a record the app writes shows up without a refresh", async () => {
  writeRecords({ CaloriesData: calories("1,500", "820", trickySubtitle) });
  await waitForTexts("calories-systemSmall", ["820"], "the new calories record", 10000);
  await waitForTexts("calories-systemSmall", [trickySubtitle], "the new record's subtitle", 10000, "givenTexts");
  await waitForTexts("calories-systemMedium", ["1,500"], "the new record's food figure", 10000);
  if (await page.$("#injected")) throw new Error("a record's text was put into the page as markup");
});

await step("past midnight the widgets show the new day", async () => {
  await page.click("#to-midnight");
  await waitForTexts("calories-systemSmall", ["2,000"], "calories after midnight", 30000);
  await waitForTexts("calories-systemSmall", [trickySubtitle], "the subtitle after midnight", 10000, "givenTexts");
  await waitForTexts("calories-systemMedium", ["Food", "0", "Exercise"], "calories rows after midnight");
  await waitForTexts("macronutrients-accessoryInline", ["Carbs 0g / Fat 0g / Protein 0g"], "macronutrients after midnight");
  await waitForTexts("macronutrients-systemMedium", ["250 g left", "67 g left", "100 g left"], "macronutrient rings after midnight");
  await waitForTexts("water-systemSmall", ["0 ml"], "water after midnight");
});

await step("a tap on the widget tells where the app would open", async () => {
  await page.click('figure[data-id="calories-systemSmall"] button.whole');
  await page.waitForFunction(() => document.getElementById("toast").textContent.includes("Would open qrv://qrv/widgets/"),
    null, { timeout: 5000 });
});

// The home screen's pictures as shown, once every one has loaded the address it asks for.
async function homePictures(appearance) {
  await page.waitForFunction((wanted) => [...document.querySelectorAll("#home figure.widget")].every((figure) => {
    const img = figure.querySelector("img");
    const address = img.dataset.src || "";
    return (wanted === "default") !== address.includes(`appearance=${wanted}`) && img.src.endsWith(address) &&
      img.complete && img.naturalWidth > 0;
  }), appearance, { timeout: 15000, polling: 200 });
  return page.$$eval("#home figure.widget img", (images) => Object.fromEntries(images.map((img) => {
    const canvas = document.createElement("canvas");
    canvas.width = img.naturalWidth;
    canvas.height = img.naturalHeight;
    canvas.getContext("2d").drawImage(img, 0, 0);
    return [img.closest("figure").dataset.id, canvas.toDataURL()];
  })));
}

await step("the tinted appearance redraws every home-screen widget, and the default brings them back", async () => {
  await page.click("#clock-pause");  // no new entry while the pictures are compared
  const before = await homePictures("default");
  await page.selectOption("#appearance", "tinted");
  const tinted = await homePictures("tinted");
  const unchanged = Object.keys(before).filter((id) => tinted[id] === before[id]);
  if (!Object.keys(before).length || unchanged.length) throw new Error(`not tinted: ${unchanged.join(", ")}`);
  await page.selectOption("#appearance", "default");
  const after = await homePictures("default");
  const different = Object.keys(before).filter((id) => after[id] !== before[id]);
  if (different.length) throw new Error(`not restored: ${different.join(", ")}`);
});

await step("the page ran without script errors", async () => {
  if (problems.length) throw new Error(problems.join("\n"));
});

mkdirSync(outDir, { recursive: true });
const shot = path.join(outDir, failed ? "e2e-failure.png" : "e2e-last-run.png");
await page.screenshot({ path: shot, fullPage: true }).catch(() => {});
console.log(`e2e: screenshot ${shot}`);

await context.close();
server.kill("SIGTERM");
await new Promise((resolve) => { if (server.exitCode !== null) resolve(); else server.on("exit", resolve); });
rmSync(work, { recursive: true, force: true });
process.exit(failed ? 1 : 0);
