// Shows the data of the report. Every text from the log is put in as text, never as markup; what is
// counted was counted by the program that made the page.
"use strict";
(() => {
  const data = JSON.parse(document.getElementById("data").textContent);
  const stat = data.Stat;
  const rowsAtOnce = 200;
  const byId = (id) => document.getElementById(id);

  function element(name, text, className) {
    const made = document.createElement(name);
    if (text !== undefined) made.textContent = text;
    if (className) made.className = className;
    return made;
  }

  const count = (number) => number.toLocaleString("en-US");
  const entriesText = (number) => count(number) + (number === 1 ? " entry" : " entries");

  // ---- Severities and times ---------------------------------------------------------------------

  const names = new Map(data.Severities.map((each) => [each.Severity, each.Name]));
  const ranks = new Map(data.Severities.map((each, rank) => [each.Severity, rank]));
  const severityName = (value) => names.get(value) ?? String(value);
  const severityClass = (value) => names.get(value) ?? "other";
  const severityRank = (value) => ranks.get(value) ?? data.Severities.length;

  const pad = (number, digits = 2) => String(number).padStart(digits, "0");

  function offsetText(minutesBehind) {
    const minutes = Math.abs(minutesBehind);
    const sign = minutesBehind > 0 ? "-" : "+";
    return sign + pad(Math.floor(minutes / 60)) + ":" + pad(minutes % 60);
  }

  // Milliseconds as the day and the time, in UTC or in the reader's own zone.
  function timeText(milliseconds) {
    const time = new Date(milliseconds);
    if (!byId("zone").checked) {
      return time.toISOString().replace("T", " ").replace(/\.\d+Z$/, "Z");
    }
    return (
      `${time.getFullYear()}-${pad(time.getMonth() + 1)}-${pad(time.getDate())} ` +
      `${pad(time.getHours())}:${pad(time.getMinutes())}:${pad(time.getSeconds())}` +
      offsetText(time.getTimezoneOffset())
    );
  }

  // A time that is no time of day is a text already.
  const momentText = (time) => (typeof time === "number" ? timeText(time) : time);
  const nanosecondsText = (time) => (time === null ? "none" : timeText(Math.floor(time / 1e6)));

  function spanText(milliseconds) {
    const units = [["day", 86400e3], ["hour", 3600e3], ["minute", 60e3], ["second", 1e3]];
    const [unit, length] = units.find((each) => milliseconds >= each[1]) ?? units[3];
    const number = Math.round((milliseconds / length) * 10) / 10;
    return `${count(number)} ${unit}${number === 1 ? "" : "s"}`;
  }

  // ---- Head and state ---------------------------------------------------------------------------

  function showNotices() {
    for (const text of data.Notices) byId("notices").append(element("p", text, "notice"));
  }

  function facts() {
    const info = stat.Info;
    const list = [
      ["Entries", `${count(info.Entries)} of ${count(info.Size)}`],
      ["When full", info.OverflowName ?? String(info.Overflow)],
      ["Overflowed", info.OverflowFlag ? "yes" : "no"],
      ["Takes entries", info.Enabled ? "yes" : "no"],
      ["First event", nanosecondsText(stat.First)],
      ["Last event", nanosecondsText(stat.Last)],
    ];
    if (stat.PerDay !== null) list.push(["Events a day", String(Number(stat.PerDay.toPrecision(2)))]);
    if (stat.RelativeEntries > 0) list.push(["Times since the start of the controller", entriesText(stat.RelativeEntries)]);
    if (stat.UntimedEntries > 0) list.push(["Without a time of the event", entriesText(stat.UntimedEntries)]);
    return list;
  }

  function showState() {
    const info = stat.Info;
    const part = info.Size > 0 ? Math.min(info.Entries / info.Size, 1) : 1;
    const percent = Number((part * 100).toPrecision(3));
    byId("fill").setAttribute("aria-label", `${percent} % full`);
    byId("fill").firstElementChild.style.width = `${percent}%`;
    byId("facts").replaceChildren();
    for (const [name, value] of [["Filled", `${percent} %`], ...facts()]) {
      const group = element("div");
      group.append(element("dt", name), element("dd", value));
      byId("facts").append(group);
    }
  }

  function showHead() {
    document.title = `Event log ${stat.Info.File}`;
    byId("file").textContent = stat.Info.File;
    byId("made").textContent = `Made by ${data.Program} at ${timeText(data.Made)}`;
  }

  // ---- Timeline ---------------------------------------------------------------------------------

  const slotNames = [...data.Severities.map((each) => each.Name), "other"];

  function drawn(name, attributes) {
    const made = document.createElementNS("http://www.w3.org/2000/svg", name);
    for (const [key, value] of Object.entries(attributes)) made.setAttribute(key, value);
    return made;
  }

  function slotTitle(counts, begin) {
    const parts = counts.map((number, slot) => [number, slotNames[slot]]).filter((each) => each[0] > 0);
    const total = counts.reduce((sum, number) => sum + number, 0);
    const lines = parts.map((each) => `${each[1]}: ${count(each[0])}`);
    return [`${timeText(begin)}, ${spanText(data.Timeline.Width)}: ${entriesText(total)}`, ...lines].join("\n");
  }

  // One stacked bar, critical events at the bottom.
  function drawSlot(counts, index, peak) {
    const width = 1000 / data.Timeline.Counts.length;
    const group = drawn("g", {});
    const title = drawn("title", {});
    title.textContent = slotTitle(counts, data.Timeline.Begin + index * data.Timeline.Width);
    group.append(title, drawn("rect", { class: "slot", x: index * width, y: 0, width, height: 200 }));
    let top = 200;
    counts.forEach((number, slot) => {
      if (number === 0) return;
      const height = Math.max((number / peak) * 195, 1.5);
      top -= height;
      group.append(drawn("rect", { class: slotNames[slot], x: index * width, y: top, width: width * 0.86, height }));
    });
    return group;
  }

  function showTimeline() {
    const { Counts, Begin, Width } = data.Timeline;
    byId("timeline").hidden = Counts.length === 0;
    byId("legend").replaceChildren();
    const totals = slotNames.map((_, slot) => Counts.reduce((sum, counts) => sum + counts[slot], 0));
    const peak = Counts.reduce((most, counts) => Math.max(most, counts.reduce((sum, each) => sum + each, 0)), 1);
    byId("chart").replaceChildren(...Counts.map((counts, index) => drawSlot(counts, index, peak)));
    const summary = slotNames.map((name, slot) => [name, totals[slot]]).filter((each) => each[1] > 0);
    for (const [name, total] of summary) {
      const item = element("li");
      item.append(element("span", undefined, `mark ${name}`), `${name} ${count(total)}`);
      byId("legend").append(item);
    }
    if (summary.length === 0) byId("legend").append(element("li", "No entry has a time of day."));
    byId("chart").setAttribute("aria-label", `Events by severity: ${summary.map((each) => `${each[0]} ${each[1]}`).join(", ")}`);
    byId("peak").textContent = `at most ${entriesText(peak)} in ${spanText(Width)}`;
    const end = Begin + Counts.length * Width;
    byId("axis").replaceChildren(...[Begin, end].map((time) => element("span", timeText(time))));
  }

  // ---- Rankings ---------------------------------------------------------------------------------

  // For the filter; a text with a quotation mark in it is looked for word by word.
  const phrase = (text) => (text.includes('"') ? text : `"${text}"`);

  function showRanking(id, tally, nameOf, phraseOf) {
    const most = tally.Groups.length > 0 ? tally.Groups[0].Entries : 1;
    for (const group of tally.Groups) {
      const item = element("li");
      const row = element("div", undefined, "row");
      const name = element("button", nameOf(group));
      name.type = "button";
      name.title = "Filter the entries by this";
      name.addEventListener("click", () => filterBy(phraseOf(group)));
      row.append(name, element("span", count(group.Entries)));
      const bar = element("div", undefined, "bar");
      bar.style.width = `${Math.max((group.Entries / most) * 100, 0.5)}%`;
      item.append(row, bar);
      byId(id).append(item);
    }
    if (tally.Groups.length === 0) byId(`${id}-rest`).textContent = "None.";
    if (tally.EntriesLeftOut > 0) {
      const more = tally.EntriesBeyondGroups > 0 ? "more than " : "";
      byId(`${id}-rest`).textContent = `and ${more}${count(tally.GroupsLeftOut)} others with ${entriesText(tally.EntriesLeftOut)}`;
    }
  }

  function filterBy(text) {
    byId("filter").value = text;
    update();
    byId("filter").focus();
  }

  // ---- Entries ----------------------------------------------------------------------------------

  // Rows stand in the order of the log, oldest first.
  const rows = data.Rows.map(([number, time, severity, source, message], place) => {
    return { place, number, time, severity, source, message, words: "" };
  });

  // What the filter looks for words in: all that a row shows.
  function collectWords() {
    for (const row of rows) {
      row.words = `${row.number} ${momentText(row.time)} ${severityName(row.severity)} ${row.source} ${row.message}`.toLowerCase();
    }
  }

  const sorting = { column: "number", down: true };
  let matching = [];
  let visible = 0;

  const compareTexts = (a, b) => (a < b ? -1 : a > b ? 1 : 0);
  const timeKey = (time) => (typeof time === "number" ? time : -Infinity);
  const comparisons = {
    number: (a, b) => a.place - b.place,
    time: (a, b) => compareTexts(timeKey(a.time), timeKey(b.time)) || a.place - b.place,
    severity: (a, b) => severityRank(a.severity) - severityRank(b.severity) || a.place - b.place,
    source: (a, b) => compareTexts(a.source, b.source) || a.place - b.place,
    message: (a, b) => compareTexts(a.message, b.message) || a.place - b.place,
  };

  function rowElement(row) {
    const made = element("tr");
    const severity = element("td");
    severity.append(element("span", undefined, `mark ${severityClass(row.severity)}`), severityName(row.severity));
    made.append(element("td", String(row.number)), element("td", momentText(row.time)), severity, element("td", row.source), element("td", row.message));
    return made;
  }

  function showRows(upTo) {
    const body = document.querySelector("#entries tbody");
    body.append(...matching.slice(visible, upTo).map(rowElement));
    visible = Math.min(upTo, matching.length);
    const rest = matching.length - visible;
    byId("more").parentElement.hidden = rest === 0;
    byId("more").textContent = `Show ${count(Math.min(rest, 5 * rowsAtOnce))} more of ${count(rest)}`;
  }

  function chosenSeverities() {
    const boxes = [...byId("severities").querySelectorAll("input")];
    return new Set(boxes.filter((box) => box.checked).map((box) => box.value));
  }

  // Words, and phrases between quotation marks; each must be there.
  function wantedWords(text) {
    return [...text.toLowerCase().matchAll(/"([^"]*)"|\S+/g)].map((found) => found[1] ?? found[0]);
  }

  function update() {
    const words = wantedWords(byId("filter").value);
    const chosen = chosenSeverities();
    const compare = comparisons[sorting.column];
    matching = rows.filter((row) => chosen.has(severityClass(row.severity)) && words.every((word) => row.words.includes(word)));
    matching.sort((a, b) => (sorting.down ? compare(b, a) : compare(a, b)));
    visible = 0;
    document.querySelector("#entries tbody").replaceChildren();
    showRows(rowsAtOnce);
    byId("shown").textContent = `${count(matching.length)} of ${entriesText(rows.length)}`;
  }

  function makeCheckboxes() {
    const held = new Set(rows.map((row) => severityClass(row.severity)));
    for (const name of slotNames.filter((each) => held.has(each))) {
      const label = element("label");
      const box = element("input");
      box.type = "checkbox";
      box.checked = true;
      box.value = name;
      box.addEventListener("change", update);
      label.append(box, element("span", undefined, `mark ${name}`), name);
      byId("severities").append(label);
    }
  }

  function sortBy(column) {
    sorting.down = sorting.column === column ? !sorting.down : false;
    sorting.column = column;
    for (const button of document.querySelectorAll("#entries th button")) {
      const head = button.parentElement;
      if (button.dataset.column === column) {
        head.setAttribute("aria-sort", sorting.down ? "descending" : "ascending");
      } else {
        head.removeAttribute("aria-sort");
      }
    }
    update();
  }

  function showTimes() {
    showHead();
    showState();
    showTimeline();
    collectWords();
    update();
  }

  // ---- Start ------------------------------------------------------------------------------------

  makeCheckboxes();
  showNotices();
  showTimes();
  showRanking("sensors", stat.Sensors, (group) => `${group.Source}: ${group.Sensor}`, (group) => phrase(`${group.Source} ${group.Sensor}:`));
  showRanking("sources", stat.Sources, (group) => group.Source, (group) => phrase(` ${group.Source} `));
  if (data.RowsLeftOut > 0) {
    byId("left-out").textContent = `The table holds the newest ${entriesText(rows.length)}; ${count(data.RowsLeftOut)} older ones are counted above and left out here.`;
  }
  byId("controls").addEventListener("submit", (event) => event.preventDefault());
  byId("filter").addEventListener("input", update);
  byId("zone").addEventListener("change", showTimes);
  byId("more").addEventListener("click", () => showRows(visible + 5 * rowsAtOnce));
  for (const button of document.querySelectorAll("#entries th button")) {
    button.addEventListener("click", () => sortBy(button.dataset.column));
  }
})();
