// End-to-end test of `qrv-widgets serve` in a real browser (Debian's chromium,
// driven by playwright-core, never a downloaded browser):
//   1. two taps on the water button add two increments to the day's total (the
//      time from each tap to the new total on the page is printed), and the
//      button of a rendered manifest, posted as it stands, adds a third;
//   2. a calories record written into the container shows up by itself;
//   3. with the clock moved to just before midnight, the calories and
//      macronutrient widgets roll over to the new day's figures and water to 0;
//   4. a page whose event stream is refused still follows a tap by polling, and
//      the server stops at once while a page holds its stream open.
// Texts are read from the data the page puts on each widget, not from pixels.
// A screenshot goes to the output directory when a step fails.
//
//   node run.mjs --qrv-widgets PATH [--out DIR]
//
// Exits 77 (skipped) when chromium or node_modules are missing.
import { spawn, execFileSync } from "node:child_process";
import { existsSync, mkdtempSync, readFileSync, rmSync, mkdirSync } from "node:fs";
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
const serverEnv = { ...process.env, TZ: "UTC", XDG_DATA_HOME: path.join(work, "data"), QRV_APP_GROUP_CONTAINER: "" };
const server = spawn(program, ["serve", "--port", "0", "--container", container, "--scheme", "light", "--locale", "en_US",
  "--os", "18"], {
  env: serverEnv,
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

await step("the host pushes its state as server-sent events", async () => {
  const widgets = await page.evaluate(() => new Promise((resolve, reject) => {
    const source = new EventSource("/api/events");
    const timer = setTimeout(() => { source.close(); reject(new Error("no event came")); }, 10000);
    source.onmessage = (event) => { clearTimeout(timer); source.close(); resolve(JSON.parse(event.data).widgets.length); };
    source.onerror = () => { clearTimeout(timer); source.close(); reject(new Error("the event stream was refused")); };
  }));
  if (!widgets) throw new Error("the pushed state holds no widget");
});

// Milliseconds from the click to the frame that first carries the new total.
async function tapUntil(button, total) {
  const started = Date.now();
  await button.click();
  await page.waitForFunction((wanted) => {
    const figure = document.querySelector('figure[data-id="water-systemSmall"]');
    return figure && JSON.parse(figure.dataset.texts || "[]").includes(wanted);
  }, total, { timeout: 15000, polling: "raf" }).catch(() => waitForTexts("water-systemSmall", [total], "after a tap", 1));
  return Date.now() - started;
}

await step("two taps on the water button add two increments", async () => {
  const button = page.locator('figure[data-id="water-systemSmall"] button.intent');
  const first = await tapUntil(button, "1500 ml");
  const second = await tapUntil(button, "1750 ml");
  console.log(`e2e: tap to new total: ${first} ms, ${second} ms`);
});

await step("the button a rendered manifest names runs on the live host as it stands", async () => {
  const gallery = path.join(work, "gallery");
  execFileSync(program, ["render", "--widget", "water", "--family", "systemSmall", "--scheme", "light",
    "--container", container, "--out", gallery], { env: serverEnv, stdio: "ignore" });
  const manifest = JSON.parse(readFileSync(path.join(gallery, "manifest.json"), "utf8"));
  const button = manifest.images.find((image) => image.family === "systemSmall").buttons[0];
  const response = await fetch(`${url}api/widgets/water-systemSmall/intents/${button.intent}`, {
    method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(button.parameters),
  });
  if (!response.ok) throw new Error(`the host answered ${response.status}: ${await response.text()}`);
  await waitForTexts("water-systemSmall", ["2000 ml"], "after the manifest's button");
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

await step("without its event stream the page polls", async () => {
  const polled = await context.newPage();
  await polled.route("**/api/events", (route) => route.abort());
  await polled.goto(url);
  await polled.locator('figure[data-id="water-systemSmall"] button.intent').click();
  await polled.waitForFunction(() => {
    const figure = document.querySelector('figure[data-id="water-systemSmall"]');
    return figure && JSON.parse(figure.dataset.texts || "[]").includes("250 ml");
  }, null, { timeout: 15000, polling: 200 });
  await polled.close();
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

// The server stops cleanly while the page still holds its event stream open.
await step("the server stops at once with the page still open", async () => {
  const exited = new Promise((resolve) => { if (server.exitCode !== null) resolve(); else server.on("exit", resolve); });
  server.kill("SIGTERM");
  const timer = new Promise((resolve) => setTimeout(() => resolve("hung"), 10000));
  if (await Promise.race([exited, timer]) === "hung") { server.kill("SIGKILL"); throw new Error("the server did not stop"); }
  if (server.exitCode !== 0) throw new Error(`the server ended with ${server.exitCode}`);
});

await context.close();
if (server.exitCode === null) server.kill("SIGKILL");
rmSync(work, { recursive: true, force: true });
process.exit(failed ? 1 : 0);
