#!/usr/bin/env node
// Builds data/foods.csv, the catalogue every new person starts with, from the everyday foods in
// data/everyday-foods.csv and the USDA National Nutrient Database for Standard Reference,
// release 24, as one XML file a food (the folder usda_sr24 of usda_sr24.jar). See data/README.md
// for where to get it and how to run this.
//
//   node data/make-foods.mjs PATH/TO/usda_sr24 > data/foods.csv
//
// Uses node's standard library only. Everything it decides is in the tables below and in
// data/short-names.mjs; the same source always gives the same file.

import { existsSync, readFileSync } from 'node:fs';
import { dirname, join } from 'node:path';
import { fileURLToPath } from 'node:url';

import { SHORT_NAMES } from './short-names.mjs';

const here = dirname(fileURLToPath(import.meta.url));
const COLUMNS = ['group', 'category', 'name', 'amount', 'unit', 'calories', 'carbohydrate', 'fiber',
                 'protein', 'fat', 'saturated fat'];
const HEADER = COLUMNS.join(',');
const NAME_LIMIT = 20;
const FOODS_PER_CATEGORY = 100;
const CATEGORIES_PER_GROUP = 250;

// ---- which foods ------------------------------------------------------------------------------

// Left out: baby foods and formulas, products sold under a brand (a word of capitals that is not
// an abbreviation below, or one of the brands written in small letters), and what nobody eats as
// it is (industrial fats, leavening, the ground beef calculator).
const NOT_BRANDS = new Set(['NFS', 'NLEA', 'USDA', 'DHA', 'ARA', 'VPP', 'BBQ', 'BLT', 'TV', 'II']);
const LEFT_OUT = [
  /^Babyfood|^Infant formula|^Child formula|^Toddler formula|[Bb]aby food/i,
  /\b(Campbell's|Kashi|Lean Pockets|Muscle Milk|Reddi Wip|Ensure|Hot Pockets|Pizza Hut|Taco Bell|Ralston|Post Honey|Natreon|Monster|Gatorade|Powerade)\b/i,
  /\bindustrial\b|^Shortening (industrial|confectionery|frying|bread|cake mix)|^Leavening agents/i,
  /calculator/i, /^Rennin/, /^Pectin/, /\bprepared from item \d+/,
  /^Protein supplement|^Nutritional supplement|^Formulated bar|^Beverage, .*(supplement|meal replacement)/i,
];
const isBrand = (name) =>
  (name.match(/[A-Za-z'&.\-]*[A-Z]{2,}[A-Za-z'&.\-]*/g) ?? []).some((w) => !NOT_BRANDS.has(w));

// Variants that differ only in what the catalogue does not hold (salt, added vitamins and
// minerals, enrichment) or barely (the grade and trim of a cut of meat) are one catalogue food:
// of foods whose descriptions are the same without these parts, the one whose parts come first
// in this list is kept (a part not listed counts as first), then the lowest USDA number.
const VARIANT_PARTS = [
  /^all grades$/, /^choice$/, /^select$/, /^prime$/,
  /^trimmed to 1\/8" fat$/, /^trimmed to 0" fat$/, /^trimmed to 1\/4" fat$/,
  /^without salt( added)?$/, /^no salt( added)?$/, /^unsalted$/, /^with salt( added)?$/, /^salted$/,
  /^(low|reduced|less|less\/reduced) sodium$/, /^low salt$/,
  /^enriched$/, /^unenriched$/, /^(not )?fortified$/, /^unfortified$/, /^with iron$/,
  /^with added (vitamin|ascorbic|calcium|nutrients|vitamins|nonfat milk solids|omega)/,
  /^salt (not )?added in processing$/, /^(with )?calcium propionate$/, /^with ca prop$/,
  /^(with|without) calcium propionate$/, /^vitamin and mineral fortified$/,
  /^extra heavy syrup( pack)?$/, /^extra light syrup( pack)?$/, /^(with|without) skin$/,
  /^made with butter$/, /^made with margarine$/, /^made with (vegetable oil|lard)$/,
  /^special dietary$/, /^made with olestra$/, /^lactose reduced$/, /^no sodium added$/,
  /^without added vitamin d$/, /^fortified with vitamin d$/, /^with added vitamin d$/,
  /^without added (vitamin|ascorbic|calcium)/, /^with (vitamin|calcium|ascorbic acid)/,
  /^vitamin [a-z]+ (added|fortified)$/, /^(with )?vitamins? a and d( added)?$/,
  /^all classes$/, /^fryer-roasters$/, /^young hen$/, /^young tom$/,
];
// Cuts of beef, pork, lamb and veal come bone-in or boneless, cut several ways and cooked several
// ways; the catalogue keeps one cooked form of each, the first of this list.
const MEAT_GROUPS = ['10', '13', '17', '23'];
const MEAT_VARIANT_PARTS = [
  /^boneless$/, /^bone-in$/, /^lip[- ]o(n|ff)$/, /^denver cut$/, /^america's beef roast$/,
  /^usda (choice|select)$/, /^trimmed 0" fat$/,
  /^roasted$/, /^broiled$/, /^grilled$/, /^braised$/, /^pan-broiled$/, /^pan-fried$/,
  /^simmered$/, /^stewed$/, /^baked$/, /^heated$/, /^unheated$/, /^pan-broil$/, /^enhanced$/,
  /^whole$/, /^rump$/, /^shank$/, /^slice$/, /^spiral slice$/, /^center slice$/,
  /^domestic$/, /^australian$/, /^new zealand$/, /^imported$/, /^fresh$/, /^frozen$/,
];

// ---- where they go ----------------------------------------------------------------------------

// The catalogue's groups: 0 Sweets, Fats, Oils; 1 Milk, Yogurt, Cheese; 2 Meat, Poultry, Fish,
// Eggs; 3 Vegetables; 4 Fruits, Fruit Juice; 5 Bread, Cereal, Rice, Pasta; 6 Drinks, Beer, Wine,
// Soda; 7 Restaurants, Other.
// Each USDA food group (the first two digits of the number) has a place; rules by the
// description come first. A category written "Name*" is split by the description's first word
// when it holds more than 100 foods: into ranges of the alphabet ("Name A-C"), each family of
// foods whole.
const PLACE_BY_USDA_GROUP = {
  '01': [1, 'Milk'], '02': [7, 'Spices and Herbs'], '04': [0, 'Fats and Oils'],
  '05': [2, 'Poultry'], '06': [7, 'Soups*'], '07': [2, 'Cold Cuts'], '08': [5, 'Cereal'],
  '09': [4, 'Fruit*'], '10': [2, 'Pork*'], '11': [3, 'Vegetables*'], '12': [7, 'Nuts'],
  '13': [2, 'Beef*'], '14': [6, 'Other Drinks'], '15': [2, 'Fish*'], '16': [3, 'Legumes*'],
  '17': [2, 'Lamb'], '18': [5, 'Bread'], '19': [0, 'Sweets'], '20': [5, 'Grains and Flours'],
  '21': [7, 'Fast Food'], '22': [7, 'Meals and Entrees'], '23': [2, 'Beef*'], '25': [7, 'Snacks'],
  '27': [7, 'Soups*'], '35': [7, 'Native Foods'], '36': [7, 'Restaurant Foods'],
  '42': [7, 'Other Foods'], '43': [7, 'Other Foods'], '44': [7, 'Other Foods'],
  '48': [5, 'Grains and Flours'], '80': [2, 'Game*'], '83': [2, 'Fish*'], '90': [2, 'Shellfish'],
  '93': [2, 'Game*'],
};

// [description, group, category], the first that matches wins; a rule may name the USDA groups
// it applies to.
const PLACES = [
  // Milk, yogurt, cheese
  [/^(Cheese|Cheese food|Cheese product|Cheese spread|Cheese substitute|Imitation cheese|Parmesan cheese topping|Cheese sauce|Cheese fondue)\b/, 1, 'Cheese', ['01', '42', '43', '44']],
  [/^USDA Commodity, cheese/, 1, 'Cheese'],
  [/^(Yogurt|Tofu yogurt)\b/, 1, 'Yogurt'],
  [/^(Cream|Sour cream|Sour dressing|Dessert topping|Whipped topping|Whipped cream|Cream substitute|Whey|Butter replacement)\b/, 1, 'Cream'],
  [/^(Ice cream|Ice creams|Light Ice Cream|Fat free ice cream|Frozen yogurts|Frozen novelties|Frozen novelites|Sherbet|Milk dessert)/, 1, 'Frozen Desserts'],
  [/^(Milk|Eggnog|Milk shakes|Milk substitutes|Soymilk|Dulce de Leche|Dairy drink mix|Ready-to-drink reduced fat milk|Rice drink)\b/, 1, 'Milk'],
  // Eggs
  [/^(Egg|Eggs|Egg substitute|Egg Mix)\b(?!.*(custard|roll|noodle))/, 2, 'Eggs'],
  // Fats and sweets
  [/^(Butter|Butter oil)\b/, 0, 'Fats and Oils', ['01', '04']],
  [/^(Oil|Fish oil|Vegetable oil)\b/, 0, 'Oils'],
  [/^(Salad dressing|Salad Dressing|Creamy dressing|Dressing|Mayonnaise|Sandwich spread)\b/, 0, 'Salad Dressings'],
  [/^(Margarine|Vegetable oil-butter|Shortening|Lard|Fat|Animal fat|Meat drippings)/, 0, 'Fats and Oils'],
  [/^(Candies|Chocolate|Baking chocolate|Chewing gum|Cocoa, dry)/, 0, 'Candy'],
  [/^(Puddings?|Desserts|Gelatin desserts|Gelatins|Flan|Egg custards|Pie fillings|Frostings|Toppings)\b/, 0, 'Desserts'],
  [/^(Cookies|Brownies)\b/, 0, 'Cookies'],
  [/^(Cake|Cheesecake|Coffeecake)\b/, 0, 'Cakes'],
  [/^(Pie|Pie crust|Pie Crust)\b/, 0, 'Pies'],
  [/^(Danish pastry|Doughnuts|Sweet rolls|Toaster pastries|Toaster Pastries|Cream puffs?|Eclairs|Strudel|Pastry|Breakfast tart|Cinnamon buns|Keikitos)/, 0, 'Pastries'],
  [/^(Sugars?|Syrups|Honey|Molasses|Sweeteners|Jams|Jellies|Marmalade|Fruit butters|Chocolate-flavored hazelnut)(,| and|$)/, 0, 'Sweets'],
  // Meat, poultry, fish
  [/^Chicken\b.*\bbreast\b/, 2, 'Chicken breast', ['05']],
  [/^Chicken\b.*\b(leg|drumstick|thigh)/, 2, 'Chicken legs', ['05']],
  [/^Chicken.*giblets and neck/, 2, 'Chicken', ['05']],
  [/^Turkey.*giblets and neck/, 2, 'Turkey', ['05']],
  [/^Chicken\b.*\b(wing|back|neck)\b/, 2, 'Chicken wings, backs', ['05']],
  [/^Chicken\b.*\b(giblets|liver|gizzard|heart|skin|fat|feet)\b/, 2, 'Chicken giblets', ['05']],
  [/^(Chicken|Capon)\b/, 2, 'Chicken', ['05']],
  [/^(Turkey|Ground turkey|Ground Turkey)\b.*\bbreast\b/, 2, 'Turkey breast', ['05']],
  [/^(Turkey|Ground turkey|Ground Turkey)\b/, 2, 'Turkey', ['05']],
  [/^Beef\b.*\b(chuck|shoulder)/, 2, 'Beef chuck'],
  [/^Beef, (rib|ribeye)/, 2, 'Beef rib'],
  [/^Beef, round\b/, 2, 'Beef round'],
  [/^Beef, (short loin|tenderloin|top sirloin|bottom sirloin|loin|top loin)/, 2, 'Beef loin'],
  [/^Beef, (brisket|flank|plate)/, 2, 'Beef brisket, flank'],
  [/^Beef, ground|^Beef, grass-fed, ground/, 2, 'Ground beef'],
  [/^Beef, variety meats/, 2, 'Beef variety meats'],
  [/^Beef\b/, 2, 'Beef', ['13', '23']],
  [/^Pork, fresh, loin\b/, 2, 'Pork loin'],
  [/^Pork, fresh, variety meats/, 2, 'Pork variety meats'],
  [/^Pork, cured, ham\b/, 2, 'Ham'],
  [/^Pork, cured\b/, 2, 'Bacon, cured pork'],
  [/^Pork\b/, 2, 'Pork', ['10']],
  [/^Veal\b/, 2, 'Veal', ['17']],
  [/^(Game meat|Bison|Goat)\b/, 2, 'Game*', ['17']],
  [/^Lamb\b.*\b(leg|shank)\b/, 2, 'Lamb leg', ['17']],
  [/^Lamb\b.*\b(loin|rib)\b/, 2, 'Lamb loin and rib', ['17']],
  [/^Lamb\b/, 2, 'Lamb', ['17']],
  [/^(Sausage|Frankfurter|Bratwurst|Kielbasa|Knackwurst|Bockwurst|Beerwurst|Brotwurst|Chorizo|Pepperoni|Polish sausage|Smoked link|Pork sausage|Beef sausage|Turkey sausage|Pork and beef sausage|Pork and turkey sausage|Blood sausage|Liver sausage|Luncheon sausage|Cheesefurter|Thuringer|Honey roll sausage|New england brand sausage|Turkey and pork sausage|Pork sausage rice links)\b/, 2, 'Sausages'],
  [/^(Crustaceans|Mollusks|Jellyfish)\b/, 2, 'Shellfish'],
  [/^(Fish|Salmon|Steelhead trout)\b/, 2, 'Fish*', ['15', '35', '83']],
  [/^(Caribou|Whale|Sea lion|Seal|Walrus|Elk|Moose|Bear|Buffalo|Deer|Squirrel|Owl|Duck|Dove|Beaver|Pheasant|Quail)\b/, 2, 'Game*', ['35', '43']],
  [/^(Duck|Goose|Ostrich|Emu|Pheasant|Quail|Squab|Guinea hen|Poultry|Pate de foie gras)\b/, 2, 'Other Poultry', ['05']],
  [/^(Bacon|Pork)\b/, 2, 'Pork*', ['42', '43']],
  [/^(Turkey|Frankfurter|Bologna|Bacon bits)\b/, 2, 'Cold Cuts', ['42', '43']],
  // Vegetables and legumes
  [/^(Tofu|Soy|Soymilk|Tempeh|Natto|Miso|Okara|Soybean|Meat extender|Veggie burgers|Bacon, meatless|Sausage, meatless)/, 3, 'Soy Foods', ['16', '43']],
  [/^(Peanuts?|Peanut butter|Peanut flour|Peanut spread)\b/, 7, 'Peanuts'],
  [/^(Potatoes|Potato|Sweet potato)\b/, 3, 'Potatoes', ['11', '43']],
  [/^(Hummus|Falafel|Refried beans|Frijoles|Chili with beans|Baked beans)/, 3, 'Legumes*'],
  [/^(Cabbage|Turnip greens|Vegetables|Palm hearts|Radishes|Eggplant|Sauerkraut|Tomato sauce|Tomato and vegetable juice|Beans)\b/, 3, 'Vegetables*', ['43']],
  // Fruit
  [/(juice|nectar)\b/i, 4, 'Fruit Juice', ['09']],
  // Bread, cereal, rice, pasta
  [/^(Cereals|Cereal|Incaparina|Rice and Wheat cereal|Milk and cereal bar|AMARANTH FLAKES|Breakfast bar)\b/, 5, 'Cereal'],
  [/^(Crackers|Cracker meal|Rice cake|Matzo|Melba|Papad)\b/, 5, 'Crackers'],
  [/^(Rolls|Bagels?|English muffins|Biscuits|Croissants|Popovers|Muffins?|Hush puppies)\b/, 5, 'Rolls and Muffins'],
  [/^(Pancakes|Waffles?|French toast)\b/, 5, 'Pancakes and Waffles'],
  [/^(Tortillas?|Taco shells|Tostada shells|Wonton wrappers|Phyllo|Puff pastry)\b/, 5, 'Tortillas and Dough'],
  [/^(Rice|Wild rice|Pasta|Spaghetti|Macaroni|Noodles|Couscous|Rice noodles)\b/, 5, 'Rice and Pasta', ['20', '16']],
  [/flour|meal\b|^Cornstarch|^Arrowroot|^Tapioca|bran$|^Wheat germ|^Vital wheat gluten/i, 5, 'Flours', ['20', '48']],
  // Drinks
  [/^(Alcoholic [Bb]everage|Wine|Malt beverage)\b/, 6, 'Beer and Wine'],
  [/^(Carbonated beverage|Energy Drink|Sports drink)\b/, 6, 'Soft Drinks'],
  [/^(Coffee|Tea|Hibiscus tea|Coffee substitute|Coffee and cocoa)\b/, 6, 'Coffee and Tea', ['14', '43']],
  [/^(Cocoa mix|Malted drink mix|Chocolate-flavor beverage mix|Carob-flavor beverage mix|Strawberry-flavor beverage mix|Eggnog-flavor mix|Chocolate syrup|Whiskey sour mix|Cocktail mix)/, 6, 'Drink Mixes'],
  [/drink|punch|ade\b|cocktail|juice/i, 6, 'Juice Drinks', ['14', '42', '43']],
  // Restaurants and other
  [/^(Soup|Stew|Split pea|Potato soup|Fish broth)/, 7, 'Soups*'],
  [/^(Sauce|Gravy|Dip|Adobo fresco|Salsa)\b/, 7, 'Sauces and Gravies'],
  [/^(Snacks?|Popcorn|Pretzels|Tortilla chips|Potato chips|Cheese puffs|Granola bar|Trail mix)\b/, 7, 'Snacks*'],
  [/^Seeds\b/, 7, 'Seeds'],
  [/^(Nuts|Hazelnuts|Pinon Nuts|Mouse nuts)\b/, 7, 'Nuts'],
  [/(hamburger|cheeseburger)/i, 7, 'Burgers', ['21']],
  [/(sandwich|submarine|hotdog|hot dog|croissant|biscuit|english muffin|corn dog)/i, 7, 'Sandwiches', ['21']],
  [/pizza/i, 7, 'Pizza', ['21', '22']],
  [/(burrito|taco|nachos|enchilada|chimichanga|tostada|frijoles|quesadilla)/i, 7, 'Mexican Food', ['21', '22']],
  [/^(Restaurant)\b/, 7, 'Restaurant Foods'],
  [/^(Oil)\b/, 0, 'Oils', ['35']],
  [/^(Vinegar|Mustard|Salt|Vanilla extract|Capers|Horseradish|Yeast extract)/, 7, 'Spices and Herbs'],
];

// ---- names ------------------------------------------------------------------------------------

// Phrases of the descriptions that read shorter (on the whole description, before it is cut
// into its parts).
const REWRITES = [
  [/\s*\((Alaska Native|Navajo|Hopi|Apache|Shoshone Bannock|Northern Plains Indians|Southwest|Cheyenne|Ojibwe|Chippewa)\)/g, ''],
  [/separable lean and fat( only)?/g, 'lean and fat'], [/separable lean only|lean only/g, 'lean'],
  // Cuts of beef
  [/^Beef, chuck, arm pot roast/, 'Arm pot roast'], [/^Beef, chuck, blade roast/, 'Blade roast'],
  [/^Beef, chuck, clod roast/, 'Clod roast'], [/^Beef, chuck, mock tender steak/, 'Mock tender steak'],
  [/^Beef, chuck, short ribs/, 'Chuck short ribs'],
  [/^Beef, chuck, shoulder clod, shoulder tender, medallion/, 'Shoulder tender'],
  [/^Beef, chuck, shoulder clod, shoulder top and center steaks/, 'Shoulder steak'],
  [/^Beef, chuck, shoulder clod, top blade, steak/, 'Top blade steak'],
  [/^Beef, chuck, top blade/, 'Top blade steak'],
  [/^Beef, chuck, under blade center steak/, 'Denver steak'],
  [/^Beef, chuck, under blade (pot roast or steak|pot roast)/, 'Under blade roast'],
  [/^Beef, chuck, under blade steak/, 'Under blade steak'],
  [/^Beef, chuck eye country-style ribs/, 'Chuck eye ribs'],
  [/^Beef, chuck eye (roast|steak)/, 'Chuck eye $1'], [/^Beef, chuck for stew/, 'Stew beef'],
  [/^Beef, shoulder (pot roast or steak|pot roast)/, 'Shoulder roast'],
  [/^Beef, shoulder top blade steak/, 'Top blade steak'], [/^Beef, shoulder steak/, 'Shoulder steak'],
  [/^Beef, rib eye steak\/roast/, 'Ribeye'], [/^Beef, rib eye (steak|roast)/, 'Ribeye $1'],
  [/^Beef, rib,? eye, small end \(ribs 10- ?12\),?/, 'Ribeye, small end,'],
  [/^Beef, rib, back ribs/, 'Back ribs'], [/^Beef, rib, shortribs/, 'Short ribs'],
  [/^Beef, rib, (large|small) end \(ribs [\d-]+\)/, 'Rib, $1 end'],
  [/^Beef, rib, whole \(ribs 6-12\)/, 'Rib, whole'], [/^Beef, ribeye cap steak/, 'Ribeye cap'],
  [/^Beef, ribeye +petite roast(\/filet)?/, 'Ribeye petite roast'], [/^Beef, ribeye filet/, 'Ribeye filet'],
  [/^Beef, round, bottom round,? (roast|steak)/, 'Bottom round $1'],
  [/^Beef, round, eye of round, roast/, 'Eye of round'], [/^Beef, round, full cut/, 'Round'],
  [/^Beef, round, knuckle, tip (center|side), steak/, 'Tip $1 steak'],
  [/^Beef, round, outside round, bottom round, steak/, 'Outside round'],
  [/^Beef, round, tip round, roast/, 'Tip round roast'], [/^Beef, round, tip round/, 'Tip round'],
  [/^Beef, round, top round,? steak/, 'Top round steak'], [/^Beef, round, top round/, 'Top round'],
  [/^Beef, short loin, porterhouse steak/, 'Porterhouse'], [/^Beef, short loin, t-bone steak/, 'T-bone'],
  [/^Beef, short loin, top loin(, steak)?/, 'Strip steak'],
  [/^Beef, tenderloin, (roast|steak)/, 'Tenderloin $1'], [/^Beef, tenderloin/, 'Tenderloin'],
  [/^Beef, top sirloin, steak/, 'Top sirloin'],
  [/^Beef, (loin, )?bottom sirloin( butt)?, tri-tip (roast|steak)/, 'Tri-tip'],
  [/^Beef, loin, top sirloin cap steak/, 'Sirloin cap'], [/^Beef, loin, top sirloin filet/, 'Sirloin filet'],
  [/^Beef, loin, top sirloin petite roast(\/filet)?/, 'Sirloin roast'],
  [/^Beef, top loin filet/, 'Top loin filet'], [/^Beef, top loin petite roast(\/filet)?/, 'Top loin roast'],
  [/^Beef, brisket, (flat|point) half/, 'Brisket, $1 half'], [/^Beef, brisket, whole/, 'Brisket'],
  [/^Beef, flank, steak/, 'Flank steak'],
  [/^Beef, plate steak, boneless, (inside|outside) skirt/, 'Skirt steak, $1'],
  [/^Beef, plate, (inside|outside) skirt steak/, 'Skirt steak, $1'],
  [/^Beef, (grass-fed, )?ground, (\d+)% lean meat \/ \d+% fat/, 'Ground beef $2%'],
  [/^Beef, (grass-fed, )?ground/, 'Ground beef'], [/patty cooked/, 'patty'],
  [/^Beef, cured, corned beef/, 'Corned beef'], [/^Beef, cured, /, 'Beef, '],
  // Cuts of pork
  [/^Pork, fresh, enhanced, /, 'Pork, fresh, '],
  [/^Pork, fresh, loin, (top loin|center loin|center rib|sirloin|blade) \(chops( or roasts)?\)/, '$1 chop'],
  [/^Pork, fresh, loin, (top loin|center loin|center rib|sirloin|blade) \(roasts\)/, '$1 roast'],
  [/^Pork, fresh, loin, tenderloin/, 'Pork tenderloin'],
  [/^Pork, fresh, loin, country-style ribs/, 'Country-style ribs'], [/^Pork, fresh, loin, whole/, 'Pork loin'],
  [/^Pork, fresh, leg \(ham\), (rump|shank) half/, 'Leg, $1 half'], [/^Pork, fresh, leg \(ham\), whole/, 'Pork leg'],
  [/^Pork, fresh, shoulder, \(boston butt\), blade \(steaks\)/, 'Blade steak'],
  [/^Pork, fresh, shoulder, arm picnic/, 'Picnic shoulder'],
  [/^Pork, fresh, shoulder, blade, boston \((roasts|steaks)\)/, 'Boston butt'],
  [/^Pork, fresh, shoulder, whole/, 'Pork shoulder'],
  [/^Pork, fresh, (spareribs|backribs|belly|backfat|carcass)/, 'Pork $1'],
  [/^Pork, fresh, composite of[^,(]*(\([^)]*\))?/, 'Pork, mixed cuts'],
  [/^Pork, ground, (\d+)% lean \/ \d+% fat/, 'Ground pork $1%'], [/^Pork, fresh, ground/, 'Ground pork'],
  [/^Pork, cured, ham with natural juices/, 'Ham'], [/^Pork, cured, ham -- water added/, 'Ham, water added'],
  [/^Pork, cured, ham and water product/, 'Ham and water'], [/^Pork, cured, ham/, 'Ham'],
  [/^Pork, cured, canadian-style bacon/, 'Canadian bacon'], [/^Pork, cured, bacon/, 'Bacon'],
  [/^Pork, cured, breakfast strips/, 'Breakfast strips'], [/^Pork, cured, salt pork/, 'Salt pork'],
  [/^Pork, cured, feet, pickled/, 'Pickled pig feet'], [/^Pork, cured, shoulder, /, 'Cured shoulder, '],
  // Cuts of lamb and veal
  [/^Lamb, (domestic|australian|new zealand)(, imported)?(, fresh|, frozen)?, /, 'Lamb, '],
  [/^Lamb, leg, whole \(shank and sirloin\)/, 'Lamb leg'], [/^Lamb, leg, /, 'Lamb leg, '],
  [/^Lamb, (loin|rib|foreshank)/, 'Lamb $1'], [/^Lamb, shoulder, whole \(arm and blade\)/, 'Lamb shoulder'],
  [/^Lamb, shoulder, /, 'Lamb shoulder, '],
  [/^(Lamb|Veal), cubed for stew( or kabob)? \(leg and shoulder\)/, '$1 stew meat'],
  [/^(Lamb|Veal), ground/, 'Ground $1'], [/^Veal, leg \(top round\)/, 'Veal leg'],
  [/^Veal, (loin|rib|sirloin|breast|shank)/, 'Veal $1'], [/^Veal, shoulder, whole \(arm and blade\)/, 'Veal shoulder'],
  [/^Veal, shoulder, /, 'Veal shoulder, '],
  [/^(Beef|Pork|Lamb|Veal), (fresh, )?variety meats and by-products, /, '$1 '],
  [/composite of trimmed retail cuts/g, 'mixed cuts'],
  // Poultry
  [/broilers or fryers, /g, ''], [/, meat and skin and giblets and neck/, ' with giblets'],
  [/^(Chicken|Turkey|Duck|Goose|Pheasant|Quail), (all classes, |domesticated, |wild, |young duckling, domesticated, white pekin, )?(dark meat, )?(breast|drumstick|thigh|leg|wing|back|neck|giblets|gizzard|heart|liver|skin only|dark meat|light meat|skin)/, '$1 $4'],
  [/ skin only/, ' skin'], [/, meat and skin/, '+skin'], [/, meat only/g, ''],
  [/fried, batter/g, 'batter-fried'], [/fried, flour/g, 'flour-fried'],
  [/rotisserie, original seasoning/g, 'rotisserie'],
  [/^Ground turkey, (\d+)% lean, \d+% fat/, 'Ground turkey $1%'],
  [/^Chicken, (roasting|stewing), /, '$1 chicken, '], [/^Chicken, capons, /, 'Capon, '],
  [/^Chicken, cornish game hens, /, 'Cornish hen, '],
  // Soups are eaten as made: condensed soup with as much water, unless it says milk.
  [/^(Soup, [^,]+(, [a-z]+ style| with [a-z ]+)?), (canned, )?prepared with equal volume water.*$/, '$1'],
  [/^(Soup, .*), canned, condensed/, '$1, condensed'], [/^(Soup, .*), canned, chunky/, '$1, chunky'],
  [/^(Soup, .*), dry, mix, prepared with water/, '$1, from mix'], [/^(Soup, .*), dry, mix/, '$1, dry mix'],
  [/, single brand/g, ''], [/, ready-to-serve, canned/g, ''],
  [/^Tomato products, canned, (paste|puree|sauce)/, 'Tomato $1'], [/^Frozen yogurts, /, 'Frozen yogurt, '],
  // Milk by its fat
  [/^Milk, whole, 3\.25% milkfat/, 'Milk, whole'], [/^Milk, producer, fluid, 3\.7% milkfat/, 'Milk, farm, 3.7%'],
  [/^Milk, (?:reduced fat|lowfat), fluid, (\d)% milkfat/, 'Milk, $1%'], [/^Milk, fluid, (\d)% fat/, 'Milk, $1%'],
  [/^Milk, (nonfat|buttermilk|goat|sheep|indian buffalo|human, mature|filled|low sodium), fluid/, 'Milk, $1'],
  [/^Milk, fluid, nonfat/, 'Milk, nonfat'], [/^(Milk, chocolate), fluid, commercial/, '$1'],
  // Vegetables
  [/^Potatoes, french fried, (all types|crinkle or regular cut)/, 'French fries'],
  [/^Potatoes, (frozen, )?french fried, /, 'French fries, '], [/^Potatoes, hashed brown/, 'Hash browns'],
  [/^Potatoes, (mashed|scalloped|baked|boiled|au gratin|microwaved|roasted|o'brien)/, '$1 potatoes'],
  [/^Sweet potato, (canned|frozen|baked|boiled)/, 'Sweet potato, $1'],
  [/, as purchased/g, ''], [/, (home-prepared, )?oven[- ]heated/g, ', baked'],
  [/(home-prepared|prepared) from (recipe|flakes|granules)( using [a-z]+)?/g, 'homemade'],
  // Fats
  [/^Margarine-like, vegetable oil spread/, 'Spread'], [/^Margarine-like spread with yogurt/, 'Yogurt spread'],
  [/^Margarine-like, butter-margarine blend/, 'Butter blend'], [/^Margarine-like, /, 'Spread, '],
  [/^Margarine, regular, /, 'Margarine, '], [/approximately (\d+)% fat/g, '$1% fat'],
  [/(\w[\w ]*?)-flavou?red\b|(\w[\w ]*?)-flavou?r\b/g, '$1$2'], [/sour[- ]cream[- ]and[- ]onion/g, 'sour cream and onion'],
  // Cooking and keeping
  [/cooked, (boiled|roasted|braised|broiled|grilled|stewed|simmered|fried|pan-fried|baked|steamed|microwaved|pan-broiled|pan-browned|stir-fried|smoked|scrambled|poached|hard-boiled|rotisserie|batter-fried|flour-fried)/g, '$1'],
  [/boiled, drained/g, 'boiled'], [/cooked, dry heat/g, 'cooked'], [/cooked, moist heat/g, 'steamed'],
  [/prepared with equal volume (low fat \(2%\) )?milk/g, 'with milk'],
  [/prepared with equal volume water/g, 'with water'], [/prepared with (whole|2%|nonfat) milk/g, 'with milk'],
  [/prepared with water/g, 'with water'], [/frozen concentrate/g, 'concentrate'],
  [/extra heavy syrup pack/g, 'heavy syrup'], [/extra light syrup pack/g, 'light syrup'],
  [/heavy syrup pack/g, 'heavy syrup'], [/light syrup pack/g, 'light syrup'],
  [/juice pack/g, 'in juice'], [/water pack/g, 'in water'],
  [/, canned, (in water|in juice|light syrup|heavy syrup)/, ', $1'],
  [/, solids and liquids/g, ''], [/, drained solids/g, ', drained'],
  [/mixed species, /g, ''], [/, mixed species/g, ''],
  [/, mature seeds/g, ''], [/, all (commercial )?varieties/g, ''], [/, all types/g, ''],
  [/, year round average/g, ''], [/, ready-to-serve/g, ''], [/, ready-to-eat/g, ''],
];

// How the first part of a description starts the name: dropped (its foods are named by what
// follows: "Nuts, almonds" is "Almonds"), or put after what follows ("Cheese, cheddar" is
// "Cheddar cheese").
const DROP_HEAD = new Set(['spices', 'nuts', 'seeds', 'fish', 'crustaceans', 'mollusks', 'cereals',
  'cereals ready-to-eat', 'cereals ready to eat', 'snacks', 'candies', 'game meat',
  'alcoholic beverage', 'carbonated beverage', 'beverages', 'beverage', 'restaurant',
  'fast foods', 'fast food', 'entrees', 'syrups', 'sweeteners', 'toppings', 'frostings',
  'desserts', 'puddings', 'frozen novelties', 'ice creams', 'side dishes', 'sandwiches and burgers',
  'usda commodity', 'usda commodity food', 'vegetables', 'tomato products', 'leavening agents',
  'formulated bar', 'latino', 'chinese', 'italian', 'mexican', 'family style', 'pizza chain']);
const HEAD_AFTER = { cheese: 'cheese', beans: 'beans', oil: 'oil', sauce: 'sauce', gravy: 'gravy',
  'salad dressing': 'dressing', soup: 'soup', cookies: 'cookies', crackers: 'crackers',
  pie: 'pie', cake: 'cake', bread: 'bread', peppers: 'peppers', squash: 'squash',
  muffins: 'muffins', rolls: 'rolls', pancakes: 'pancakes', tea: 'tea', coffee: 'coffee',
  lettuce: 'lettuce', cabbage: 'cabbage', onions: 'onions', mushrooms: 'mushrooms' };
// Parts left out of every name.
const DROP_PARTS = [/^(regular|plain|commercial|commercially prepared|ns as to .*|nfs)$/,
  /^lean and fat$/, /^boneless$/, /^bone-in$/,
  /^includes? /, /^(made|prepared) (with|from) /, /^home-prepared$/, /^bottled$/,
  /^domestic$/, /^imported$/, /^fresh$/];

// ---- household measures -----------------------------------------------------------------------

// The catalogue's units as the CSV names them.
const UNITS = { pinch: 'pinch', tsp: 'tsp', tbsp: 'tbsp', cup: 'cup', pint: 'pint', qrt: 'qrt',
                floz: 'fl oz', ml: 'ml', item: 'item' };
// Measures counted in items: a food's natural piece. Others (a package, a can, a whole roast, a
// spear of broccoli) are left for the cup or spoon.
const ITEM_MEASURES = /^(medium|large|small|extra large|extra small|jumbo|slice|piece|item|each|egg|fruit|cookie|muffin|bagel|biscuit|pancake|waffle|tortilla|bar|link|frankfurter|patty|fillet|steak|chop|drumstick|thigh|wing|breast|leg|croissant|doughnut|roll|sandwich|taco|burrito|enchilada|chimichanga|tostada|ear|potato|tomato|apple|banana|orange|peach|pear|plum|nectarine|kiwifruit|mango|onion|carrot|pepper|sausage|cake|cupcake|brownie|pastry|danish|pretzel|bun|wrap|egg roll|tamale|knish|pita|pie)\b/;
// Measures too small to be a food's first serving, or not one piece however named.
const NOT_A_SERVING = /\b(bite size|mini|miniature|crumbs|cubes|yield|package|jar|can\b|container|box|bag|loaf|recipe|roast|rack|bird|whole pie|cake\b.*dia|pizza|stick|head|bunch|serving size)/;

// ---- CSV --------------------------------------------------------------------------------------

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

// ---- the catalogue's own rules ----------------------------------------------------------------

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

// ---- numbers ----------------------------------------------------------------------------------

// The shortest text that reads back as the same single-precision float: what the catalogue's own
// export writes, so that exporting the shipped catalogue gives this file's numbers back.
function floatText(x) {
  const f = Math.fround(x);
  for (let p = 1; p <= 9; ++p) {
    const s = Number(f.toPrecision(p));
    if (Math.fround(s) === f) return String(s);
  }
  return String(f);
}
const grams = (x) => {
  const v = Math.round(x * 1000) / 1000;
  if (!(v >= 0 && v <= 1000)) throw new Error(`gram value out of range: ${x}`);
  return floatText(v);
};
const calories = (x) => {
  const v = Math.round(x);
  if (!(v >= 0 && v <= 10000)) throw new Error(`calories out of range: ${x}`);
  return String(v);
};

// ---- the source -------------------------------------------------------------------------------

const decode = (s) => s.replace(/&quot;/g, '"').replace(/&apos;/g, "'").replace(/&lt;/g, '<')
  .replace(/&gt;/g, '>').replace(/&amp;/g, '&');
const attributes = (tag) =>
  Object.fromEntries([...tag.matchAll(/(\w+)="([^"]*)"/g)].map((m) => [m[1], decode(m[2])]));

// The foods of the index, less the deprecated ones: number, description, values per 100 g and
// household measures in the source's order.
function sourceFoods(folder) {
  const index = (file) => readFileSync(join(folder, file), 'latin1').split('\n').filter((l) => l)
    .map((l) => l.split('|')[0]);
  const deprecated = new Set(index('deprecated.index'));
  const foods = [];
  for (const id of index('foods.index')) {
    if (deprecated.has(id)) continue;
    const xml = readFileSync(join(folder, `${id}.xml`), 'latin1');
    const food = attributes(xml.match(/<food [^>]*>/)[0]);
    const values = {};
    for (const m of xml.matchAll(/<nutrient [^>]*\/>/g)) {
      const a = attributes(m[0]);
      values[a.name] = Number(a.amount);
    }
    const measures = [...xml.matchAll(/<measure [^>]*\/>/g)].map((m) => {
      const a = attributes(m[0]);
      return { amount: Number(a.amount), name: a.name, grams: Number(a.grams) };
    });
    foods.push({ id, description: food.name.trim().replace(/\s+/g, ' '), values, measures });
  }
  return foods;
}

// ---- deciding ---------------------------------------------------------------------------------

// A description's parts: split at the commas outside parentheses.
function partsOf(description) {
  const parts = [];
  let depth = 0;
  let part = '';
  for (const c of description) {
    if (c === '(') ++depth;
    if (c === ')') depth = Math.max(0, depth - 1);
    if ((c === ',' || c === ';') && depth === 0) { parts.push(part.trim()); part = ''; } else part += c;
  }
  parts.push(part.trim());
  return parts.filter((p) => p !== '');
}

function leftOutWhy(food) {
  if (!(food.values.Energy >= 0)) return 'no energy';
  if (food.id.startsWith('03')) return 'baby food';
  if (isBrand(food.description)) return 'brand';
  if (LEFT_OUT.some((re) => re.test(food.description))) return 'not a food people log';
  return null;
}

// The description without its variant parts, and how far down the list of variants it is.
function variantOf(food) {
  const list = MEAT_GROUPS.includes(food.id.slice(0, 2))
    ? [...VARIANT_PARTS, ...MEAT_VARIANT_PARTS] : VARIANT_PARTS;
  let rank = 0;
  const kept = [];
  for (const part of partsOf(food.description)) {
    const i = list.findIndex((re) => re.test(part.toLowerCase()));
    if (i < 0) kept.push(part.replace(/\s*\((chops|roasts|chops or roasts|steaks)\)/, ''));
    else rank = Math.max(rank, i + 1);
  }
  return { key: kept.join(', ').toLowerCase(), rank };
}

function placeOf(food) {
  const usda = food.id.slice(0, 2);
  for (const [re, group, category, only] of PLACES) {
    if ((!only || only.includes(usda)) && re.test(food.description)) return [group, category];
  }
  const place = PLACE_BY_USDA_GROUP[usda];
  if (!place) throw new Error(`${food.id}: no place for the USDA group ${usda}`);
  return place;
}

const capital = (s) => s.charAt(0).toUpperCase() + s.slice(1);

// The name the rule gives, before it is fitted to 20 characters, as its parts.
function nameParts(food) {
  let text = food.description;
  for (const [re, to] of REWRITES) text = text.replace(re, to);
  let parts = partsOf(text)
    .map((p) => p.replace(/\s*\([^)]*\)?/g, '').trim())
    .filter((p) => p !== '' && !VARIANT_PARTS.some((re) => re.test(p.toLowerCase())));
  parts = parts.filter((p, i) => i === 0 || !DROP_PARTS.some((re) => re.test(p.toLowerCase())));
  while (parts.length > 1 && DROP_HEAD.has(parts[0].toLowerCase())) parts.shift();
  const after = HEAD_AFTER[parts[0].toLowerCase()];
  if (after && parts.length > 1 && !STATES.test(parts[1])) {
    const noun = after.replace(/s$/, '');
    parts = [parts[1].toLowerCase().includes(noun) ? parts[1] : `${parts[1]} ${after}`, ...parts.slice(2)];
  }
  return parts.map((p, i) => (i === 0 ? capital(p) : p.charAt(0) === p.charAt(0).toUpperCase() &&
                                        p.slice(1) === p.slice(1).toLowerCase() ? lower(p) : p));
}

// Qualifiers that tell how a food was kept or cooked: the last to be dropped from a name.
const STATES = /^(raw|cooked|boiled|roasted|braised|broiled|grilled|stewed|simmered|fried|pan-fried|baked|steamed|microwaved|frozen|canned|dried|dry|dry mix|prepared|condensed|unprepared|with water|with milk|drained|lean|lean and fat|with skin|heated|unheated|powder|instant|sweetened|unsweetened)$/i;

// The ways a name's parts may be written shorter without losing anything, cumulatively: the
// head of a meat without a first word that the category says ("Chicken breast" among chicken
// breasts),
// "lean" joined to the head, and among meats a cut without "steak", "roast" or "chop".
function shorterForms(parts, category, group) {
  const words = new Set(lower(category).split(/[ ,]+/));
  const forms = [parts];
  let p = parts;
  const head = p[0].split(' ');
  if (group === 2 && head.length > 1 && words.has(lower(head[0])) && !/ with /.test(p[0])) {
    p = [capital(head.slice(1).join(' ')), ...p.slice(1)];
    forms.push(p);
  }
  const lean = p.findIndex((x, i) => i > 0 && x === 'lean');
  if (lean > 0) {
    p = [`${p[0]} lean`, ...p.slice(1).filter((x, i) => i + 1 !== lean)];
    forms.push(p);
  }
  if (group === 2 && / (steak|roast|chop)( lean)?$/.test(p[0]) && p[0].split(' ').length > 2) {
    p = [p[0].replace(/ (steak|roast|chop)( lean)?$/, '$2'), ...p.slice(1)];
    forms.push(p);
  }
  // A soup among soups: "Beef noodle soup" is "Beef noodle".
  if (category.startsWith('Soups') && / soup$/.test(p[0]) && p[0].split(' ').length > 2) {
    p = [p[0].replace(/ soup$/, ''), ...p.slice(1)];
    forms.push(p);
  }
  const shorter = p.map((x) => SHORTER_WORDS.reduce((t, [re, to]) => t.replace(re, to), x));
  if (shorter.join() !== p.join()) forms.push(shorter);
  return forms;
}

// Words written shorter when a name needs it.
const SHORTER_WORDS = [
  [/\blow fat\b/, 'lowfat'], [/\breduced fat\b/, 'light'], [/\bpart skim milk\b/, 'part skim'],
  [/\brefrigerated dough\b/, 'dough'], [/\bsoft-type\b/, 'soft'], [/\bdry mix\b/, 'mix'],
  [/\bwith creme filling\b/, 'creme-filled'], [/\bready-to-drink\b/, 'ready'],
  [/\bconcentrate\b/, 'conc.'], [/\bcondensed\b/, 'cond.'],
  [/\bwithout\b/, 'no'], [/\bchocolate\b/, 'choc.'],
];

// Every name of at most 20 characters the parts can give, best first: from a shorter form, then
// with qualifiers left out, keeping how the food was kept or cooked longest, then the most
// qualifiers, then the earlier ones.
function candidateNames(parts, category, group) {
  const candidates = [];
  shorterForms(parts, category, group).forEach((form, f) => {
    const rest = form.slice(1);
    for (let mask = (1 << rest.length) - 1; mask >= 0; --mask) {
      const kept = rest.filter((_, i) => mask & (1 << i));
      const text = [form[0], ...kept].join(', ');
      if (text.length > NAME_LIMIT) continue;
      // What leaving a qualifier out costs: most for how the food was kept or cooked and for
      // its kind (the first qualifier), a little more for earlier ones.
      const cost = rest.reduce((sum, x, i) => (mask & (1 << i) ? sum
        : sum + (STATES.test(x) ? 4 : i === 0 ? 3 : 1) + (rest.length - i) / 100), 0);
      candidates.push({ text, cost, f });
    }
  });
  candidates.sort((a, b) => a.cost - b.cost || a.f - b.f);
  if (candidates.length === 0) {
    // A head that alone is too long: cut after its last whole word that fits.
    const head = shorterForms(parts, category, group).pop()[0];
    const cut = head.slice(0, NAME_LIMIT + 1).lastIndexOf(' ');
    candidates.push({ text: (cut > 0 ? head.slice(0, cut) : head.slice(0, NAME_LIMIT)).replace(/[ ,;&-]+$/, '') });
  }
  return candidates.map((c) => c.text);
}

// The household measure a food is shown in first, as the catalogue's amount and unit and its
// weight in grams; none when the source has none that maps to a unit of the catalogue.
function measureOf(m) {
  const name = m.name.trim();
  const low = name.toLowerCase();
  if (!(m.amount > 0 && m.grams > 0)) return null;
  // A measure that says its volume in fluid ounces or millilitres is that volume.
  const floz = low.match(/(?:^|[\s(])(\d+(?:\.\d+)?) ?(?:fl|lf) oz\b/);
  const ml = low.match(/(?:^|[\s(])(\d+(?:\.\d+)?) ?ml\b/);
  const spoon = low.match(/^serving,? \(?(\d+(?:\.\d+)?|1\/2|1\/4|1\/3) (cup|tbsp|tsp)\)?$/);
  if (/^(cup|cups)\b/.test(low)) {
    if (floz && Number(floz[1]) !== 8) return { amount: m.amount * Number(floz[1]), unit: UNITS.floz, grams: m.grams };
    return { amount: m.amount, unit: UNITS.cup, grams: m.grams };
  }
  if (/^(tbsp|tablespoons?)\b/.test(low)) return { amount: m.amount, unit: UNITS.tbsp, grams: m.grams };
  if (/^(tsp|teaspoons?)\b/.test(low)) return { amount: m.amount, unit: UNITS.tsp, grams: m.grams };
  if (/^(fl oz|fluid ounces?)\b/.test(low)) return { amount: m.amount, unit: UNITS.floz, grams: m.grams };
  if (spoon) {
    const amount = spoon[1].includes('/') ? 1 / Number(spoon[1].split('/')[1]) : Number(spoon[1]);
    return { amount: m.amount * amount, unit: UNITS[spoon[2]], grams: m.grams };
  }
  if (/^(serving|jigger|can|bottle|glass|drink box|individual)\b/.test(low)) {
    if (floz) return { amount: m.amount * Number(floz[1]), unit: UNITS.floz, grams: m.grams };
    if (ml) return { amount: m.amount * Number(ml[1]), unit: UNITS.ml, grams: m.grams };
    return null;
  }
  // Items count one piece: "2 slices" is a slice of half their weight, and half a breast (as the
  // source weighs a breast whole) is one piece as people serve it.
  if (ITEM_MEASURES.test(low) && !NOT_A_SERVING.test(low)) {
    return { amount: 1, unit: UNITS.item, grams: m.amount > 1 ? m.grams / m.amount : m.grams };
  }
  return null;
}

// An item measure first (a medium apple, a slice of bread), else a cup or spoon; a lone fluid
// ounce becomes a cup's worth. An item is 5 to 350 g (not a jellybean, not a whole roast); no
// serving weighs more than a kilogram.
const ITEM_GRAMS = [5, 350];
const MAX_SERVING_GRAMS = 1000;
function servingOf(food) {
  const measured = food.measures.map((m) => [m.name.toLowerCase(), measureOf(m)])
    .filter(([, m]) => m && m.grams <= MAX_SERVING_GRAMS &&
                       (m.unit !== UNITS.item || (m.grams >= ITEM_GRAMS[0] && m.grams <= ITEM_GRAMS[1])));
  const item = (re) => measured.find(([name, m]) => m.unit === UNITS.item && re.test(name))?.[1];
  const best = item(/^medium\b/) ?? item(/^(slice|piece|item|each|fruit|egg)\b/) ??
               item(/^(?!large|small|extra|jumbo)/) ?? item(/^large\b/) ?? item(/./);
  if (best) return best;
  // Of the cups and spoons, the one nearest a plain portion's 100 calories: a cup of milk, a
  // tablespoon of oil, a teaspoon of sugar.
  const volumes = measured.map(([, m]) => m).filter((m) => m.unit !== UNITS.item)
    .map((m) => (m.unit === UNITS.floz && m.amount === 1 ? { ...m, amount: 8, grams: m.grams * 8 } : m));
  const distance = (m) => Math.abs(Math.log(Math.max(food.values.Energy * m.grams / 100, 1) / 100));
  const order = [UNITS.cup, UNITS.tbsp, UNITS.tsp, UNITS.floz, UNITS.ml];
  volumes.sort((a, b) => distance(a) - distance(b) || order.indexOf(a.unit) - order.indexOf(b.unit));
  return volumes[0] ?? null;
}

// Values of a food per 100 g: energy, carbohydrate (with the fibre, as on labels), fibre,
// protein, fat and saturated fat. A value the source does not give is 0; no part exceeds its whole.
function valuesOf(food) {
  const v = food.values;
  const fat = v.Fat ?? 0;
  const carbohydrate = v.Carbs ?? 0;
  return [v.Energy, carbohydrate, Math.min(v.Fiber ?? 0, carbohydrate), v.Protein ?? 0, fat,
          Math.min(v.Saturated ?? 0, fat)];
}

// Two foods of one name are taken for one when their values differ by at most a tenth (or 5
// calories, 1 g).
function sameValues(a, b) {
  return a.every((x, i) => Math.abs(x - b[i]) <= (i === 0 ? Math.max(5, 0.1 * x) : Math.max(1, 0.1 * x)));
}

// ---- main -------------------------------------------------------------------------------------

const sourceFolder = process.argv[2];
if (!sourceFolder || !existsSync(join(sourceFolder, 'foods.index'))) {
  process.stderr.write('usage: node data/make-foods.mjs PATH/TO/usda_sr24 > data/foods.csv\n' +
                       '(the folder of usda_sr24.jar that holds foods.index; see data/README.md)\n');
  process.exit(2);
}
const report = (line) => process.stderr.write(`${line}\n`);

// categories: key "group\u0000name" -> {group, name, foods: [{name, row, ...}]}
const categories = new Map();
function categoryOf(group, name) {
  const key = `${group}\u0000${name}`;
  if (!categories.has(key)) categories.set(key, { group, name, foods: [] });
  return categories.get(key);
}

// The everyday foods first, exactly as written there.
const everyday = parseCsv(readFileSync(join(here, 'everyday-foods.csv'), 'utf8'));
if (everyday[0].join(',') !== HEADER) throw new Error('everyday-foods.csv: unexpected header');
for (const r of everyday.slice(1)) {
  categoryOf(Number(r[0]), r[1]).foods.push({ name: r[2], row: [...r, ''], everyday: true });
}

const counts = { leftOut: {}, variants: 0, merged: 0, shortened: 0, numbered: 0, hand: 0 };
const kept = new Map();  // variant key -> food
for (const food of sourceFoods(sourceFolder)) {
  const why = leftOutWhy(food);
  if (why) { counts.leftOut[why] = (counts.leftOut[why] ?? 0) + 1; continue; }
  const variant = variantOf(food);
  const other = kept.get(variant.key);
  if (other && other.rank <= variant.rank) { ++counts.variants; continue; }
  if (other) ++counts.variants;
  kept.set(variant.key, { ...food, rank: variant.rank });
}

// Placed; categories marked "*" are split after.
const toSplit = new Map();
for (const food of kept.values()) {
  const [group, category] = placeOf(food);
  if (!category) throw new Error(`${food.id}: no category`);
  const entry = { food, parts: nameParts(food), values: valuesOf(food), serving: servingOf(food) };
  if (category.endsWith('*')) {
    const key = `${group}\u0000${category}`;
    if (!toSplit.has(key)) toSplit.set(key, { group, base: category.slice(0, -1), foods: [] });
    toSplit.get(key).foods.push(entry);
  } else {
    categoryOf(group, category).foods.push(entry);
  }
}

// A category of more than 100 foods becomes ranges of the alphabet by the description's first
// word ("Vegetables A-C"), each word's foods kept together.
const family = (e) => lower(partsOf(e.food.description)[0]);
for (const { group, base, foods } of toSplit.values()) {
  if (foods.length <= FOODS_PER_CATEGORY) {
    categoryOf(group, base).foods.push(...foods);
    continue;
  }
  // A word of more than 100 foods ("Beef") is split by the second part of the description.
  const firstWords = new Map();
  for (const e of foods) firstWords.set(family(e), (firstWords.get(family(e)) ?? 0) + 1);
  const familyOf = (e) => (firstWords.get(family(e)) > FOODS_PER_CATEGORY
    ? lower(partsOf(e.food.description).slice(0, 2).join(', ')) : family(e));
  const letter = (k) => k.split(', ').pop().charAt(0).toUpperCase();
  const families = new Map();
  for (const e of foods) {
    if (!families.has(familyOf(e))) families.set(familyOf(e), []);
    families.get(familyOf(e)).push(e);
  }
  // Whole letters make a range, so that a word is found under its letter alone; a letter of more
  // than 100 foods is split between its words, named by their first two letters ("Ca-Ch").
  const word = (k) => k.split(', ').pop();
  const keys = [...families.keys()].sort((a, b) => compareNames(word(a), word(b)) || compareNames(a, b));
  const size = (ks) => ks.reduce((n, k) => n + families.get(k).length, 0);
  const letters = [];
  for (const k of keys) {
    const last = letters[letters.length - 1];
    if (last && letter(last[0]) === letter(k)) last.push(k); else letters.push([k]);
  }
  const ranges = [];
  for (const ks of letters) {
    const last = ranges[ranges.length - 1];
    if (size(ks) > FOODS_PER_CATEGORY) {
      const prefix = (k) => capital(k.split(', ').pop().slice(0, 2));
      const parts = [];
      for (const k of ks) {
        const part = parts[parts.length - 1];
        if (part && size([...part, k]) <= FOODS_PER_CATEGORY) part.push(k); else parts.push([k]);
      }
      for (const part of parts) {
        const from = prefix(part[0]);
        const to = prefix(part[part.length - 1]);
        ranges.push({ keys: part, label: `${base} ${from === to ? from : `${from}-${to}`}` });
      }
    } else if (last && !last.label && size([...last.keys, ...ks]) <= FOODS_PER_CATEGORY) {
      last.keys.push(...ks);
    } else {
      ranges.push({ keys: [...ks] });
    }
  }
  // Letters without foods go to the range before them: the ranges cover A to Z.
  ranges.forEach((r, i) => {
    if (r.label) return;
    const previous = i > 0 ? letter(ranges[i - 1].keys[ranges[i - 1].keys.length - 1]) : null;
    const from = previous ? String.fromCharCode(previous.charCodeAt(0) + 1) : 'A';
    const to = i === ranges.length - 1 ? 'Z' : letter(r.keys[r.keys.length - 1]);
    r.label = from === to ? `${base} ${from}` : `${base} ${from}-${to}`;
  });
  for (const r of ranges) {
    for (const k of r.keys) categoryOf(group, r.label).foods.push(...families.get(k));
  }
}

// Named: from the hand-made table, else by the rule: the best name not taken in the category,
// nor the whole name of another of its foods. Shorter names choose first. A food of the same
// name as an everyday food of its category, or of the same name and nearly the same values as
// another, is that food; another is numbered by the catalogue's rule.
for (const cat of categories.values()) {
  const taken = new Map();
  const unique = [];
  for (const e of cat.foods.filter((f) => f.everyday)) { taken.set(e.name, e); unique.push(e); }
  const source = cat.foods.filter((f) => !f.everyday);
  const whole = new Map();
  for (const e of source) {
    e.full = e.parts.join(', ');
    if (e.full.length <= NAME_LIMIT && !SHORT_NAMES[e.food.id]) whole.set(e.full, e);
  }
  source.sort((a, b) => a.full.length - b.full.length || a.food.rank - b.food.rank ||
                        a.food.id.localeCompare(b.food.id));
  for (const e of source) {
    const hand = SHORT_NAMES[e.food.id];
    const candidates = hand ? [hand] : candidateNames(e.parts, cat.name, cat.group);
    const free = candidates.find((c) => !taken.has(c) && (!whole.has(c) || whole.get(c) === e));
    e.name = free ?? candidates[0];
    if (e.name.length > NAME_LIMIT) throw new Error(`${e.food.id}: '${e.name}' is too long`);
    if (hand) ++counts.hand;
    const same = taken.get(e.name);
    if (same && (same.everyday || sameValues(same.values, e.values))) {
      ++counts.merged;
      report(`${e.food.id}: '${e.food.description}' left out: '${e.name}' is already there`);
      continue;
    }
    const name = uniqueName(e.name, new Set(taken.keys()));
    if (name !== e.name) {
      ++counts.numbered;
      report(`${e.food.id}: '${e.food.description}' named '${name}' ('${e.name}' is taken)`);
    } else if (!hand && name !== e.full) {
      ++counts.shortened;
      report(`${e.food.id}: '${e.food.description}' shortened to '${name}'`);
    }
    e.name = name;
    taken.set(name, e);
    unique.push(e);
  }
  cat.foods = unique;
}

// A food's row: its household serving and that serving's weight when it has one, else 100 g.
function rowOf(group, category, e) {
  if (e.everyday) return [String(group), category, e.name, ...e.row.slice(3)];
  const s = e.serving;
  const scale = s ? s.grams / 100 : 1;
  const [kcal, ...gramValues] = e.values.map((v) => v * scale);
  return [String(group), category, e.name, s ? floatText(s.amount) : '100', s ? s.unit : 'g',
          calories(kcal), ...gramValues.map(grams), s ? grams(s.grams) : ''];
}

const out = [`${HEADER},grams`];
const perGroup = Array.from({ length: 8 }, () => ({ categories: 0, foods: 0, measured: 0 }));
const sorted = [...categories.values()].filter((c) => c.foods.length > 0)
  .sort((a, b) => a.group - b.group || compareNames(a.name, b.name));
for (const cat of sorted) {
  if (cat.name.length > NAME_LIMIT) throw new Error(`category '${cat.name}' is too long`);
  if (cat.foods.length > FOODS_PER_CATEGORY) {
    throw new Error(`category '${cat.name}' holds ${cat.foods.length} foods`);
  }
  const g = perGroup[cat.group];
  if (++g.categories > CATEGORIES_PER_GROUP) throw new Error(`group ${cat.group} is too full`);
  for (const e of [...cat.foods].sort((a, b) => compareNames(a.name, b.name))) {
    const row = rowOf(cat.group, cat.name, e);
    out.push(row.map(csvField).join(','));
    ++g.foods;
    if (row[row.length - 1] !== '') ++g.measured;
  }
}
process.stdout.write(out.join('\n') + '\n');

const total = (key) => perGroup.reduce((sum, g) => sum + g[key], 0);
report(`left out: ${Object.entries(counts.leftOut).map(([k, n]) => `${n} ${k}`).join(', ')}; ` +
       `${counts.variants} variants of a kept food; ${counts.merged} alike in name and values`);
report(`${counts.hand} names from the table, ${counts.shortened} shortened, ` +
       `${counts.numbered} numbered`);
perGroup.forEach((g, i) => report(`group ${i}: ${g.foods} foods in ${g.categories} categories, ` +
                                  `${g.measured} with a household measure`));
report(`${total('foods')} foods in ${sorted.length} categories, ` +
       `${total('measured')} with a household measure`);
if (process.env.FOODS_WORKSHEET) {
  const { writeFileSync } = await import('node:fs');
  const lines = [];
  for (const cat of sorted) {
    for (const e of cat.foods) if (!e.everyday) lines.push([cat.name, e.name, e.food.id, e.food.description].join('\t'));
  }
  writeFileSync(process.env.FOODS_WORKSHEET, lines.join('\n') + '\n');
}
