// The page, style and script of the live host, kept here as text so that
// the program serves them without files beside it.
#include "Host/WebPage.hpp"

namespace qrv::host {

std::string_view webPageHTML() {
    return R"QRVPAGE(<!doctype html>
<html lang="en">
<head>
<meta charset="utf-8">
<meta name="viewport" content="width=device-width, initial-scale=1">
<title>Quorvane widgets · live host</title>
<link rel="stylesheet" href="/app.css">
<script src="/app.js" defer></script>
</head>
<body>
<header class="bar">
  <div class="brand">
    <strong>Quorvane widgets</strong>
    <span id="device" class="muted"></span>
  </div>
  <div class="clock" aria-live="off">
    <span id="clock-mode" class="pill">real time</span>
    <time id="clock-now" data-testid="clock-now">–</time>
  </div>
  <div class="controls" role="group" aria-label="Clock">
    <button id="to-midnight" title="Run the clock from 23:59:50 today, to watch midnight pass">23:59:50</button>
    <button id="plus-hour" title="Move the clock one hour ahead">+1 h</button>
    <button id="plus-day" title="Move the clock one day ahead">+1 day</button>
    <input id="clock-input" type="datetime-local" step="1" aria-label="Host time">
    <button id="clock-set">Set</button>
    <button id="clock-pause" title="Stop or restart the host's clock">Stop</button>
    <button id="clock-real" class="primary" title="Follow the system clock again">Real time</button>
  </div>
  <div class="controls" role="group" aria-label="View">
    <label>Scheme
      <select id="scheme">
        <option value="system">System</option>
        <option value="light">Light</option>
        <option value="dark">Dark</option>
      </select>
    </label>
    <label>Appearance
      <select id="appearance" data-testid="appearance">
        <option value="default">Home Screen</option>
        <option value="dark">Home Screen · dark</option>
        <option value="tinted">Home Screen · tinted</option>
        <option value="lock-screen">Lock Screen</option>
        <option value="standby">StandBy</option>
        <option value="standby-night">StandBy at night</option>
      </select>
    </label>
    <input id="tint" type="color" value="#f2c24c" title="The tint of the tinted home screen" aria-label="Tint" hidden>
    <label><input id="show-regions" type="checkbox"> Tap regions</label>
    <button id="reload" title="Ask every widget for a new timeline">Reload all</button>
  </div>
</header>
<main>
  <section class="screen" aria-labelledby="home-title">
    <h2 id="home-title">Home Screen</h2>
    <div class="frame home-frame">
      <div id="home" class="home-grid"></div>
    </div>
  </section>
  <section class="screen lock-screen" aria-labelledby="lock-title">
    <h2 id="lock-title">Lock Screen</h2>
    <div class="frame lock-frame">
      <div id="lock-inline" class="lock-inline"></div>
      <div id="lock-time" class="lock-time">–</div>
      <div id="lock" class="lock-row"></div>
    </div>
  </section>
</main>
<footer class="muted">
  <p>Tap a widget as on the phone: links and the widget's own link say where the app would open; the water
  button logs water and reloads the tapped widget. The host watches the store, so records the app writes
  show up by themselves, and every widget follows its timeline (move the clock to 23:59:50 to watch
  midnight pass).</p>
</footer>
<div id="toast" class="toast" role="status" aria-live="polite"></div>
</body>
</html>
)QRVPAGE";
}

std::string_view webPageStyle() {
    return R"QRVPAGE(:root {
  color-scheme: light dark;
  --bg: #f2f2f7; --fg: #1c1c1e; --muted: #6e6e73; --card: #ffffff; --line: #d1d1d6;
  --accent: #0a84ff; --danger: #d70015;
  font: 14px/1.4 "Inter", system-ui, sans-serif;
}
body.dark { --bg: #000000; --fg: #f2f2f7; --muted: #98989d; --card: #1c1c1e; --line: #38383a; }
* { box-sizing: border-box; }
body { margin: 0; background: var(--bg); color: var(--fg); }
.muted { color: var(--muted); }
.bar {
  position: sticky; top: 0; z-index: 10; display: flex; flex-wrap: wrap; gap: 10px 18px; align-items: center;
  padding: 10px 18px; background: color-mix(in srgb, var(--card) 88%, transparent);
  backdrop-filter: blur(12px); border-bottom: 1px solid var(--line);
}
.brand { display: flex; flex-direction: column; min-width: 160px; }
.clock { display: flex; align-items: center; gap: 8px; font-variant-numeric: tabular-nums; }
.clock time { font-size: 18px; font-weight: 600; }
.pill { font-size: 11px; text-transform: uppercase; letter-spacing: .04em; padding: 2px 8px; border-radius: 999px;
  background: var(--line); color: var(--fg); }
.pill.moved { background: #ff9f0a; color: #000; }
.controls { display: flex; flex-wrap: wrap; gap: 6px; align-items: center; }
button, select, input { font: inherit; color: var(--fg); background: var(--card); border: 1px solid var(--line);
  border-radius: 8px; padding: 4px 10px; }
button { cursor: pointer; }
button:hover { border-color: var(--accent); }
button.primary { background: var(--accent); border-color: var(--accent); color: #fff; }
main { display: flex; flex-wrap: wrap; gap: 32px; justify-content: center; padding: 24px 16px; }
.screen h2 { font-size: 13px; text-transform: uppercase; letter-spacing: .06em; color: var(--muted); margin: 0 0 8px 6px; }
.frame { border-radius: 44px; padding: 28px 22px 34px; border: 10px solid #1c1c1e; box-shadow: 0 12px 40px rgba(0,0,0,.25); }
.home-frame { background: linear-gradient(160deg, #6d8ff0 0%, #a78bfa 45%, #f0abfc 100%); }
body.dark .home-frame { background: linear-gradient(160deg, #1e2a5a 0%, #3b2c6b 50%, #5a2a58 100%); }
body.appearance-tinted .home-frame { background: linear-gradient(160deg, color-mix(in srgb, var(--tint) 30%, #000),
  color-mix(in srgb, var(--tint) 10%, #000)); }
body.appearance-standby .home-frame, body.appearance-standby-night .home-frame { background: #000; }
body.appearance-lock-screen .home-frame { background: linear-gradient(180deg, #0f172a 0%, #1e3a5f 60%, #3b5b7d 100%); }
body.appearance-standby .lock-screen, body.appearance-standby-night .lock-screen,
body.appearance-tinted .lock-screen { display: none; }
figure.widget[hidden] { display: none; }
.home-grid { display: flex; flex-wrap: wrap; align-content: flex-start; width: var(--grid-width, 338px);
  gap: 26px var(--grid-gap, 22px); }
/* StandBy: the phone on its side, the two small widgets next to each other. */
body.appearance-standby .home-grid, body.appearance-standby-night .home-grid { width: auto; flex-wrap: nowrap;
  gap: 28px; justify-content: center; align-items: center; }
body.appearance-standby .home-frame, body.appearance-standby-night .home-frame { padding: 24px 40px; }
.lock-frame { background: linear-gradient(180deg, #0f172a 0%, #1e3a5f 60%, #3b5b7d 100%); color: #fff;
  width: calc(var(--grid-width, 338px) + 64px); min-height: 420px; display: flex; flex-direction: column; align-items: center; }
.lock-time { font-size: 76px; font-weight: 600; letter-spacing: -1px; line-height: 1; margin: 4px 0 18px;
  font-variant-numeric: tabular-nums; }
.lock-inline { display: flex; flex-direction: column; align-items: center; gap: 6px; min-height: 26px; }
.lock-row { display: flex; flex-wrap: wrap; gap: 16px 12px; justify-content: center; }
.widget { margin: 0; display: flex; flex-direction: column; align-items: center; gap: 6px; }
.surface { position: relative; border-radius: 22px; overflow: hidden; box-shadow: 0 6px 18px rgba(0,0,0,.18); }
.lock-frame .surface { border-radius: 12px; box-shadow: none; overflow: visible; }
.surface img { display: block; width: 100%; height: 100%; user-select: none; -webkit-user-drag: none; }
.widget.placeholder img { filter: grayscale(1) opacity(.55); }
.tap { position: absolute; margin: 0; padding: 0; border: 0; background: transparent; cursor: pointer; border-radius: 8px; }
.tap.whole { inset: 0; border-radius: inherit; }
.tap:focus-visible { outline: 3px solid var(--accent); outline-offset: 1px; }
.tap.intent:active { background: rgba(255,255,255,.25); }
body.regions .tap.whole { outline: 2px dashed rgba(255,255,255,.8); outline-offset: -3px; }
body.regions .tap.link { background: rgba(10,132,255,.18); outline: 2px dashed #0a84ff; }
body.regions .tap.intent { background: rgba(48,209,88,.22); outline: 2px dashed #30d158; }
.widget.busy .tap.intent { cursor: progress; }
figcaption { font-size: 12px; line-height: 1.3; text-align: center; color: rgba(255,255,255,.95); text-shadow: 0 1px 2px rgba(0,0,0,.45); max-width: 100%; }
figcaption .detail { display: block; font-size: 11px; opacity: .8; }
.badge { display: inline-block; font-size: 10px; padding: 0 6px; border-radius: 999px; background: rgba(0,0,0,.35); margin-left: 4px; }
footer { max-width: 760px; margin: 0 auto 40px; padding: 0 16px; font-size: 13px; text-align: center; }
.toast { position: fixed; left: 50%; bottom: 24px; transform: translateX(-50%) translateY(20px); opacity: 0;
  background: rgba(28,28,30,.94); color: #fff; padding: 10px 16px; border-radius: 12px; font-size: 14px;
  transition: opacity .2s, transform .2s; pointer-events: none; max-width: 90vw; box-shadow: 0 6px 24px rgba(0,0,0,.3); }
.toast.shown { opacity: 1; transform: translateX(-50%) translateY(0); }
.toast.error { background: var(--danger); }
.toast code { font: 13px ui-monospace, SFMono-Regular, Menlo, monospace; }
)QRVPAGE";
}

std::string_view webPageScript() {
    return R"QRVPAGE("use strict";
// The live host's page: follows the host's state (pushed as server-sent events;
// polled once a second while the stream is down), shows each installed widget's
// current picture with its tap targets laid over it, and sends taps, clock
// moves and reloads back. Every text from the host goes in as text, never as markup.
(() => {
  const $ = (id) => document.getElementById(id);
  const familyNames = {
    systemSmall: "Small", systemMedium: "Medium", systemLarge: "Large", systemExtraLarge: "Extra large",
    accessoryCircular: "Circular", accessoryRectangular: "Rectangular", accessoryInline: "Inline",
  };
  const familyOrder = ["systemSmall", "systemMedium", "systemLarge", "systemExtraLarge",
    "accessoryCircular", "accessoryRectangular", "accessoryInline"];
  let state = null;
  let fetchedAt = 0;
  let shownVersion = -1;
  let schemeChoice = null;
  let appearanceChoice = "default";
  // The appearance pictures are asked in ("dark" is the home screen in the dark scheme).
  function appearance() { return appearanceChoice === "dark" ? "default" : appearanceChoice; }
  const figures = new Map();
  const darkQuery = window.matchMedia("(prefers-color-scheme: dark)");

  function scheme() {
    if (appearanceChoice === "dark") return "dark";
    const choice = schemeChoice || (state && state.scheme) || "system";
    if (choice === "light" || choice === "dark") return choice;
    return darkQuery.matches ? "dark" : "light";
  }

  let toastTimer = 0;
  function toast(parts, isError) {
    const box = $("toast");
    box.replaceChildren();
    for (const part of parts) {
      if (typeof part === "string") box.append(document.createTextNode(part));
      else { const code = document.createElement("code"); code.textContent = part.code; box.append(code); }
    }
    box.classList.toggle("error", !!isError);
    box.classList.add("shown");
    clearTimeout(toastTimer);
    toastTimer = setTimeout(() => box.classList.remove("shown"), 3200);
  }

  // The host's own zone: taken from the offset of its "now".
  function offsetSeconds(iso) {
    const match = /([+-])(\d\d):?(\d\d)$/.exec(iso);
    if (!match) return 0;
    const seconds = Number(match[2]) * 3600 + Number(match[3]) * 60;
    return match[1] === "-" ? -seconds : seconds;
  }
  function hostNowUnix() {
    if (!state) return Date.now() / 1000;
    if (state.clock === "stopped") return state.nowUnix;
    return state.nowUnix + (performance.now() - fetchedAt) / 1000;
  }
  function pad(n) { return String(n).padStart(2, "0"); }
  // Local wall time in the host's zone, as "YYYY-MM-DDTHH:MM:SS".
  function hostLocal(unix) {
    const d = new Date((unix + offsetSeconds(state ? state.now : "Z")) * 1000);
    return `${d.getUTCFullYear()}-${pad(d.getUTCMonth() + 1)}-${pad(d.getUTCDate())}T` +
      `${pad(d.getUTCHours())}:${pad(d.getUTCMinutes())}:${pad(d.getUTCSeconds())}`;
  }
  function shortTime(iso) { return iso ? iso.slice(11, 16) : "–"; }

  function renderClock() {
    const local = hostLocal(hostNowUnix());
    const date = new Date(local + "Z");
    const day = date.toLocaleDateString(undefined, { weekday: "short", day: "numeric", month: "short", timeZone: "UTC" });
    $("clock-now").textContent = `${day} ${local.slice(11)}`;
    $("clock-now").dateTime = local;
    $("lock-time").textContent = local.slice(11, 16);
    if (!state) return;
    const mode = $("clock-mode");
    mode.textContent = { real: "real time", shifted: "moved", stopped: "stopped" }[state.clock] || state.clock;
    mode.classList.toggle("moved", state.clock !== "real");
    $("clock-pause").textContent = state.clock === "stopped" ? "Run" : "Stop";
  }

  function describe(widget) {
    return widget.texts.map((t) => t.shown).filter((t) => t).join(" · ");
  }

  function figureFor(widget) {
    let figure = figures.get(widget.id);
    if (figure) return figure;
    figure = document.createElement("figure");
    figure.className = "widget";
    figure.dataset.id = widget.id;
    figure.dataset.kind = widget.kind;
    figure.dataset.family = widget.family;
    figure.dataset.testid = `widget-${widget.id}`;
    const surface = document.createElement("div");
    surface.className = "surface";
    const img = document.createElement("img");
    img.decoding = "async";
    surface.append(img);
    const caption = document.createElement("figcaption");
    figure.append(surface, caption);
    figures.set(widget.id, figure);
    return figure;
  }

  function rectStyle(el, rect) {
    el.style.left = `${rect.x}px`; el.style.top = `${rect.y}px`;
    el.style.width = `${rect.width}px`; el.style.height = `${rect.height}px`;
  }

  async function runIntent(widget, button, figure) {
    figure.classList.add("busy");
    try {
      const response = await fetch(`/api/widgets/${encodeURIComponent(widget.id)}/intents/${encodeURIComponent(button.intent)}`, {
        method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(button.parameters),
      });
      const answer = await response.json().catch(() => ({}));
      if (!response.ok) { toast([answer.error || `The host answered ${response.status}`], true); return; }
      const amount = Object.values(button.parameters).reverse().join(" ");
      toast(["Ran ", { code: button.intent }, ` (${amount}); reloading ${widget.displayName}`]);
      poll();
    } catch (error) {
      toast([`The host cannot be reached: ${error.message}`], true);
    } finally {
      figure.classList.remove("busy");
    }
  }

  function overlays(widget, figure) {
    const surface = figure.querySelector(".surface");
    for (const old of surface.querySelectorAll(".tap")) old.remove();
    const whole = document.createElement("button");
    whole.className = "tap whole";
    whole.dataset.testid = "tap-widget";
    if (widget.widgetURL) {
      whole.setAttribute("aria-label", `${widget.displayName}: open ${widget.widgetURL}`);
      whole.addEventListener("click", () => toast(["Would open ", { code: widget.widgetURL }]));
    } else {
      whole.setAttribute("aria-label", `${widget.displayName}: open the app`);
      whole.addEventListener("click", () => toast(["Would open the app (no link: the platform tells it which widget was tapped)"]));
    }
    surface.append(whole);
    for (const link of widget.links) {
      const el = document.createElement("button");
      el.className = "tap link";
      el.dataset.url = link.url;
      el.setAttribute("aria-label", `Open ${link.url}`);
      rectStyle(el, link.rect);
      el.addEventListener("click", (event) => { event.stopPropagation(); toast(["Would open ", { code: link.url }]); });
      surface.append(el);
    }
    for (const button of widget.buttons) {
      const el = document.createElement("button");
      el.className = "tap intent";
      el.dataset.testid = "intent-button";
      el.dataset.intent = button.intent;
      el.setAttribute("aria-label", `${button.intent} ${Object.values(button.parameters).reverse().join(" ")}`);
      rectStyle(el, button.rect);
      el.addEventListener("click", (event) => { event.stopPropagation(); runIntent(widget, button, figure); });
      surface.append(el);
    }
  }

  function updateFigure(widget, figure, force) {
    const surface = figure.querySelector(".surface");
    // Only the families the device shows in this appearance, at its size there
    // (StandBy draws the small widget larger).
    const shownHere = appearance() === "default" ? { scale: 1 } : (widget.appearances || {})[appearance()];
    figure.hidden = !shownHere;
    const scale = shownHere ? shownHere.scale : 1;
    // The caption wraps under its widget instead of widening the grid cell.
    figure.style.width = `${widget.size.width * scale}px`;
    surface.style.width = `${widget.size.width}px`;
    surface.style.height = `${widget.size.height}px`;
    surface.style.zoom = String(scale);
    const version = String(widget.version);
    let wanted = `/api/widgets/${widget.id}/${scheme()}.png?v=${version}`;
    if (appearance() !== "default") wanted += `&appearance=${appearance()}`;
    if (appearance() === "tinted") wanted += `&tint=${encodeURIComponent($("tint").value)}`;
    const img = surface.querySelector("img");
    if (force || img.dataset.src !== wanted) {
      // Swap once the new picture is loaded, so the widget never blinks.
      const next = new Image();
      // Only the latest picture may take over: an older one can finish loading last.
      next.onload = () => { if (img.dataset.src === wanted) img.src = wanted; };
      next.src = wanted;
      img.dataset.src = wanted;
      if (!img.src) img.src = wanted;
    }
    img.alt = `${widget.displayName}: ${describe(widget)}`;
    if (figure.dataset.version !== version || force) overlays(widget, figure);
    figure.dataset.version = version;
    figure.dataset.placeholder = String(widget.placeholder);
    figure.dataset.entryDate = widget.entryDate || "";
    figure.dataset.texts = JSON.stringify(widget.texts.map((t) => t.shown));
    figure.dataset.givenTexts = JSON.stringify(widget.texts.map((t) => t.text));
    figure.classList.toggle("placeholder", widget.placeholder);

    const caption = figure.querySelector("figcaption");
    caption.replaceChildren();
    caption.append(document.createTextNode(`${widget.displayName} · ${familyNames[widget.family] || widget.family}`));
    if (widget.placeholder) {
      const badge = document.createElement("span");
      badge.className = "badge";
      badge.textContent = "placeholder";
      caption.append(badge);
    }
    const detail = document.createElement("span");
    detail.className = "detail";
    const parts = [];
    if (!widget.placeholder) parts.push(`entry ${widget.entryIndex + 1}/${widget.entryCount} from ${shortTime(widget.entryDate)}`);
    if (widget.waiting) parts.push("reloading…");
    else if (widget.nextReload) parts.push(`reload ${shortTime(widget.nextReload)}`);
    detail.title = "The entry shown now, and when the reload policy asks for a new timeline";
    detail.textContent = parts.join(" · ");
    caption.append(detail);
  }

  function render(force) {
    if (!state) return;
    document.body.classList.toggle("dark", scheme() === "dark");
    for (const name of ["tinted", "lock-screen", "standby", "standby-night"])
      document.body.classList.toggle(`appearance-${name}`, appearance() === name);
    document.body.style.setProperty("--tint", $("tint").value);
    document.body.dataset.appearance = appearance();
    // Only the appearances the device has (the tinted home screen came with system 18).
    for (const option of $("appearance").options) {
      const name = option.value === "dark" ? "default" : option.value;
      option.disabled = !state.widgets.some((w) => (w.appearances || {})[name]);
    }
    $("device").textContent = `${state.deviceDescription} · system ${state.os}`;
    const smalls = state.widgets.filter((w) => w.family === "systemSmall");
    const mediums = state.widgets.filter((w) => w.family === "systemMedium");
    if (smalls.length && mediums.length) {
      const width = mediums[0].size.width;
      document.documentElement.style.setProperty("--grid-width", `${width}px`);
      document.documentElement.style.setProperty("--grid-gap", `${Math.max(0, width - 2 * smalls[0].size.width)}px`);
    }
    for (const widget of state.widgets) {
      const figure = figureFor(widget);
      const parent = widget.screen === "home" ? $("home")
        : widget.family === "accessoryInline" ? $("lock-inline") : $("lock");
      if (figure.parentElement !== parent) parent.append(figure);
      // Small widgets side by side, then the wider ones, each in gallery order.
      figure.style.order = String(familyOrder.indexOf(widget.family));
      updateFigure(widget, figure, force);
    }
    // The screen takes the appearance's name, and goes when nothing is shown on it.
    $("home-title").textContent = appearance() === "default" ? "Home Screen" : $("appearance").selectedOptions[0].text;
    const anyHome = [...$("home").children].some((figure) => !figure.hidden);
    $("home").closest("section").style.display = anyHome ? "" : "none";
    document.body.dataset.version = String(state.version);
  }

  function accept(next) {
    state = next;
    fetchedAt = performance.now();
    if (state.version !== shownVersion) { render(false); shownVersion = state.version; }
    if (!schemeChoice) $("scheme").value = state.scheme;
  }

  let polling = false;
  async function poll() {
    if (polling) return;
    polling = true;
    try {
      const response = await fetch("/api/state", { cache: "no-store" });
      if (response.ok) accept(await response.json());
    } catch (error) {
      // The host stopped or restarted; the next poll tries again.
    } finally {
      polling = false;
    }
  }

  // The host pushes its state whenever it changes. While the stream is down
  // (the host restarting, too many streams open) the page polls instead; the
  // browser reconnects a dropped stream by itself, and a refused one is tried
  // again after a while.
  let streaming = false;
  function listen() {
    if (!window.EventSource) return;
    const stream = new EventSource("/api/events");
    stream.onopen = () => { streaming = true; };
    stream.onmessage = (event) => {
      streaming = true;
      try { accept(JSON.parse(event.data)); } catch (error) { /* a broken event: the next one replaces it */ }
    };
    stream.onerror = () => {
      streaming = false;
      if (stream.readyState === EventSource.CLOSED) setTimeout(listen, 5000);
    };
  }

  async function setClock(body) {
    try {
      const response = await fetch("/api/clock", {
        method: "POST", headers: { "Content-Type": "application/json" }, body: JSON.stringify(body),
      });
      const answer = await response.json().catch(() => ({}));
      if (!response.ok) toast([answer.error || `The host answered ${response.status}`], true);
      await poll();
    } catch (error) {
      toast([`The host cannot be reached: ${error.message}`], true);
    }
  }
  function moveBy(seconds) {
    const time = new Date((hostNowUnix() + seconds) * 1000).toISOString().replace(/\.\d+Z$/, "Z");
    setClock({ mode: state && state.clock === "stopped" ? "stop" : "run", time });
  }

  $("to-midnight").addEventListener("click", () => {
    setClock({ mode: "run", time: `${hostLocal(hostNowUnix()).slice(0, 10)}T23:59:50` });
  });
  $("plus-hour").addEventListener("click", () => moveBy(3600));
  $("plus-day").addEventListener("click", () => moveBy(86400));
  $("clock-set").addEventListener("click", () => {
    const value = $("clock-input").value;
    if (!value) { toast(["Choose a date and time first"], true); return; }
    setClock({ mode: "run", time: value.length === 16 ? `${value}:00` : value });
  });
  $("clock-pause").addEventListener("click", () => {
    const time = new Date(hostNowUnix() * 1000).toISOString().replace(/\.\d+Z$/, "Z");
    setClock({ mode: state && state.clock === "stopped" ? "run" : "stop", time });
  });
  $("clock-real").addEventListener("click", () => setClock({ mode: "real" }));
  $("reload").addEventListener("click", async () => {
    const response = await fetch("/api/reload", { method: "POST" });
    toast([response.ok ? "Asked every widget for a new timeline" : `The host answered ${response.status}`], !response.ok);
    poll();
  });
  $("scheme").addEventListener("change", (event) => { schemeChoice = event.target.value; render(true); });
  // Appearances switch on the page: the host draws each picture when it is asked for.
  $("appearance").addEventListener("change", (event) => {
    appearanceChoice = event.target.value;
    $("tint").hidden = appearanceChoice !== "tinted";
    render(true);
  });
  $("tint").addEventListener("input", () => render(true));
  $("show-regions").addEventListener("change", (event) => document.body.classList.toggle("regions", event.target.checked));
  darkQuery.addEventListener("change", () => render(true));

  poll().then(() => { if (state) $("clock-input").value = hostLocal(hostNowUnix()); });
  listen();
  setInterval(() => { if (!streaming) poll(); }, 1000);
  setInterval(renderClock, 250);
})();
)QRVPAGE";
}

}  // namespace qrv::host
