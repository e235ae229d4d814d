# SPDX-License-Identifier: Apache-2.0
#
# Writes the example data from R's own package "datasets":  Rscript examples/data/make.R examples/data
# The files are kept in the repository, so neither the build nor the tests need R.

arguments <- commandArgs(trailingOnly = TRUE)
folder <- if (length(arguments) > 0) arguments[[1]] else "."

# CSV with quotes only where they are needed, NA for missing values, LF line ends.
write_table <- function(table, name) {
  path <- file.path(folder, paste0(name, ".csv"))
  connection <- file(path, open = "wb", encoding = "UTF-8")
  write.csv(table, connection, row.names = FALSE, quote = FALSE, na = "NA")
  close(connection)
}

month_of <- function(series) {
  position <- round(as.numeric(time(series)) * 12)
  sprintf("%04d-%02d", position %/% 12, position %% 12 + 1)
}

cars <- data.frame(
  model = rownames(mtcars),
  miles_per_gallon = mtcars$mpg,
  cylinders = mtcars$cyl,
  horsepower = mtcars$hp,
  weight = round(mtcars$wt * 1000),
  gearbox = ifelse(mtcars$am == 1, "manual", "automatic"))
write_table(cars, "cars")

air <- data.frame(
  date = sprintf("1973-%02d-%02d", airquality$Month, airquality$Day),
  month = month.name[airquality$Month],
  ozone = airquality$Ozone,
  solar = airquality$Solar.R,
  wind = airquality$Wind,
  temperature = airquality$Temp)
write_table(air, "air")

flowers <- data.frame(
  species = as.character(iris$Species),
  sepal_length = iris$Sepal.Length,
  sepal_width = iris$Sepal.Width,
  petal_length = iris$Petal.Length,
  petal_width = iris$Petal.Width)
write_table(flowers, "iris")

write_table(data.frame(month = month_of(co2), co2 = as.numeric(co2)), "co2")

write_table(data.frame(eruption = faithful$eruptions, waiting = faithful$waiting), "geyser")

chicks <- data.frame(
  diet = c("Diet 1", "Diet 2", "Diet 3", "Diet 4")[as.integer(ChickWeight$Diet)],
  chick = as.integer(as.character(ChickWeight$Chick)),
  day = ChickWeight$Time,
  weight = ChickWeight$weight)
write_table(chicks[order(chicks$chick, chicks$day), ], "chicks")

passengers <- as.data.frame(Titanic)
names(passengers) <- c("class", "sex", "age", "survived", "people")
write_table(passengers, "titanic")

phones <- data.frame(
  year = rep(as.integer(rownames(WorldPhones)), ncol(WorldPhones)),
  region = rep(c(N.Amer = "North America", Europe = "Europe", Asia = "Asia",
    S.Amer = "South America", Oceania = "Oceania", Africa = "Africa",
    Mid.Amer = "Middle America")[colnames(WorldPhones)], each = nrow(WorldPhones)),
  phones = as.vector(WorldPhones))
write_table(phones, "phones")

temperatures <- data.frame(
  year = floor(as.numeric(time(nottem)) + 0.001),
  month = month.abb[cycle(nottem)],
  temperature = as.numeric(nottem))
write_table(temperatures, "nottingham")

write_table(
  data.frame(longitude = quakes$long, latitude = quakes$lat, depth = quakes$depth,
    magnitude = quakes$mag, stations = quakes$stations),
  "quakes")

write_table(data.frame(temperature = pressure$temperature, pressure = pressure$pressure), "mercury")

deaths <- data.frame(
  age = rep(rownames(VADeaths), ncol(VADeaths)),
  group = rep(c("Rural men", "Rural women", "Urban men", "Urban women"), each = nrow(VADeaths)),
  rate = as.vector(VADeaths))
write_table(deaths, "virginia")

# Alaska and Hawaii are left out: the package puts them off the West Coast.
mainland <- !(state.name %in% c("Alaska", "Hawaii"))
write_table(
  data.frame(state = state.name, region = state.region, longitude = state.center$x,
    latitude = state.center$y, population = state.x77[, "Population"],
    income = state.x77[, "Income"])[mainland, ],
  "states")
